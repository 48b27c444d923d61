#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace kv408 {

/// Lets one thread rest until another one has something for it.
class Waker {
public:
    /// Ends the rest under way, or else the next one; on any thread.
    void wake() {
        {
            const std::lock_guard lock(mutex_);
            woken_ = true;
        }
        condition_.notify_one();
    }

    /// Rests until woken, for `longest` at most.
    void rest(std::chrono::nanoseconds longest) {
        std::unique_lock lock(mutex_);
        condition_.wait_for(lock, longest, [this] { return woken_; });
        woken_ = false;
    }

private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool woken_ = false;
};

} // namespace kv408
