#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "export/export_file.h"
#include "export/exported_sweep.h"

namespace kv408 {

/// Where recorded sweeps go. Called on the recorder's own thread.
class RecordingTarget {
public:
    virtual ~RecordingTarget() = default;

    /// Adds `sweep`; not done: why not, for a person, with the path.
    virtual SavedFile add(const ExportedSweep& sweep) = 0;
};

/// How far a recording is.
struct RecordingProgress {
    std::uint64_t recorded = 0; ///< sweeps that are in the file
    std::uint64_t missed = 0;   ///< sweeps that came faster than they could be written
    bool running = true;
    std::string problem; ///< why it ended by itself; empty otherwise
};

/// Writes sweeps on a thread of its own, so that nobody waits for a disk. It ends by itself at the
/// first sweep that cannot be written.
class Recorder {
public:
    /// Sweeps that wait to be written at most; further ones are missed.
    static constexpr std::size_t most_waiting = 64;

    explicit Recorder(std::unique_ptr<RecordingTarget> target);

    /// Writes what waits, then ends.
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Hands `sweep` over to be written. Takes no time.
    void add(ExportedSweep sweep);

    /// Takes no more; what waits is written.
    void stop();

    /// Waits until all that was handed over is written, or the recording has ended.
    void wait_until_written();

    [[nodiscard]] RecordingProgress progress() const;

private:
    void write();

    std::unique_ptr<RecordingTarget> target_;
    mutable std::mutex access_; ///< guards what follows
    std::condition_variable changed_;
    std::deque<ExportedSweep> waiting_;
    RecordingProgress progress_;
    bool stopping_ = false;
    bool writing_ = false;
    std::thread writer_; ///< last: it uses all of the others
};

} // namespace kv408
