#include "export/recorder.h"

#include <utility>

namespace kv408 {

Recorder::Recorder(std::unique_ptr<RecordingTarget> target)
    : target_(std::move(target)), writer_([this] { write(); }) {}

Recorder::~Recorder() {
    stop();
    writer_.join();
}

void Recorder::add(ExportedSweep sweep) {
    {
        const std::lock_guard lock(access_);
        if (stopping_ || !progress_.running) {
            return;
        }
        if (waiting_.size() >= most_waiting) {
            ++progress_.missed;
            return;
        }
        waiting_.push_back(std::move(sweep));
    }
    changed_.notify_all();
}

void Recorder::stop() {
    {
        const std::lock_guard lock(access_);
        stopping_ = true;
    }
    changed_.notify_all();
}

void Recorder::wait_until_written() {
    std::unique_lock lock(access_);
    changed_.wait(lock, [this] { return !progress_.running || (waiting_.empty() && !writing_); });
}

RecordingProgress Recorder::progress() const {
    const std::lock_guard lock(access_);
    return progress_;
}

void Recorder::write() {
    std::unique_lock lock(access_);
    while (progress_.running) {
        changed_.wait(lock, [this] { return stopping_ || !waiting_.empty(); });
        if (waiting_.empty()) {
            progress_.running = false;
            break;
        }
        const ExportedSweep sweep = std::move(waiting_.front());
        waiting_.pop_front();
        writing_ = true;
        lock.unlock();
        SavedFile saved = target_->add(sweep);
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

} // namespace kv408
