#pragma once

#include "host/clock.h"

namespace kv408 {

/// A clock for tests that only moves when it is told to; sleeping moves it.
class VirtualClock : public Clock {
public:
    [[nodiscard]] std::chrono::nanoseconds now() const override { return now_; }

    void sleep(std::chrono::nanoseconds duration) override { advance(duration); }

    [[nodiscard]] LocalTime local_time() const override { return local_time_; }

    [[nodiscard]] std::chrono::system_clock::time_point time_of_day() const override {
        return std::chrono::system_clock::time_point(
            std::chrono::duration_cast<std::chrono::system_clock::duration>(now_));
    }

    /// Moves the clock on by `duration`; zero or less does nothing.
    void advance(std::chrono::nanoseconds duration) {
        if (duration > std::chrono::nanoseconds::zero()) {
            now_ += duration;
        }
    }

    /// Sets the date and time that `local_time` gives; they stay until set again.
    void set_local_time(const LocalTime& local_time) { local_time_ = local_time; }

private:
    std::chrono::nanoseconds now_{0};
    LocalTime local_time_{};
};

} // namespace kv408
