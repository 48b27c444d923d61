#pragma once

#include <chrono>

namespace kv408 {

/// A local date and time of day as the wall clock shows it.
struct LocalTime {
    int year = 2000; ///< four digits
    int month = 1;   ///< 1..12
    int day = 1;     ///< 1..31
    int hour = 0;    ///< 0..23
    int minute = 0;  ///< 0..59
    int second = 0;  ///< 0..59
};

/// Time and waiting, passed to whoever needs them so that tests run on a clock of their own.
class Clock {
public:
    virtual ~Clock() = default;

    /// Time since an arbitrary fixed moment; never goes back.
    [[nodiscard]] virtual std::chrono::nanoseconds now() const = 0;

    /// Blocks the caller for `duration`; zero or less returns at once.
    virtual void sleep(std::chrono::nanoseconds duration) = 0;

    /// The local date and time of day.
    [[nodiscard]] virtual LocalTime local_time() const = 0;

    /// The same moment as the system counts it, with the part of a second.
    [[nodiscard]] virtual std::chrono::system_clock::time_point time_of_day() const = 0;
};

} // namespace kv408
