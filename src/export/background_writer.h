#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "export/export_file.h"

namespace kv408 {

/// Where a background writer's items go. Called on the writer's own thread.
template <typename Item>
class WriterTarget {
public:
    virtual ~WriterTarget() = default;

    /// Adds `item`. Where that fails the message says why, with the path.
    virtual SavedFile add(const Item& item) = 0;
};

/// The progress of a recording.
struct RecordingProgress {
    std::uint64_t recorded = 0; ///< items that are in the file
    std::uint64_t missed = 0;   ///< items that came faster than they could be written
    bool running = true;
    std::string problem; ///< why it ended by itself; empty otherwise
};

/// Writes items on a thread of its own, so that the program never waits for a disk. It ends by
/// itself at the first item that cannot be written.
template <typename Item>
class BackgroundWriter {
public:
    /// The most items that wait to be written; further ones are missed.
    static constexpr std::size_t most_waiting = 64;

    explicit BackgroundWriter(std::unique_ptr<WriterTarget<Item>> target)
        : target_(std::move(target)), writer_([this] { write(); }) {}

    /// Writes what waits, then ends.
    ~BackgroundWriter() {
        stop();
        writer_.join();
    }
    BackgroundWriter(const BackgroundWriter&) = delete;
    BackgroundWriter& operator=(const BackgroundWriter&) = delete;

    /// Hands `item` over to be written, without waiting.
    void add(Item item) {
        {
            const std::lock_guard lock(access_);
            if (stopping_ || !progress_.running) {
                return;
            }
            if (waiting_.size() >= most_waiting) {
                ++progress_.missed;
                return;
            }
            waiting_.push_back(std::move(item));
        }
        changed_.notify_all();
    }

    /// Takes no more; what waits is written.
    void stop() {
        {
            const std::lock_guard lock(access_);
            stopping_ = true;
        }
        changed_.notify_all();
    }

    /// Waits until all that was handed over is written, or the recording has ended.
    void wait_until_written() {
        std::unique_lock lock(access_);
        changed_.wait(lock,
                      [this] { return !progress_.running || (waiting_.empty() && !writing_); });
    }

    [[nodiscard]] RecordingProgress progress() const {
        const std::lock_guard lock(access_);
        return progress_;
    }

private:
    void write() {
        std::unique_lock lock(access_);
        while (progress_.running) {
            changed_.wait(lock, [this] { return stopping_ || !waiting_.empty(); });
            if (waiting_.empty()) {
                progress_.running = false;
                break;
            }
            const Item item = std::move(waiting_.front());
            waiting_.pop_front();
            writing_ = true;
            lock.unlock();
            SavedFile saved = target_->add(item);
            lock.lock();
            writing_ = false;
            if (saved.status == FileStatus::done) {
                ++progress_.recorded;
            } else {
                progress_.problem = std::move(saved.message);
                progress_.running = false;
            }
            changed_.notify_all();
        }
        waiting_.clear();
        changed_.notify_all();
    }

    std::unique_ptr<WriterTarget<Item>> target_;
    mutable std::mutex access_; ///< guards what follows
    std::condition_variable changed_;
    std::deque<Item> waiting_;
    RecordingProgress progress_;
    bool stopping_ = false;
    bool writing_ = false;
    std::thread writer_; ///< last: it uses all of the others
};

} // namespace kv408
