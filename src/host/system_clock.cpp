#include "host/system_clock.h"

#include <ctime>
#include <thread>

namespace kv408 {

std::chrono::nanoseconds SystemClock::now() const {
#ifdef CLOCK_BOOTTIME
    std::timespec time = {};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
#else
    // Linux alone has a steady clock that stands still while the computer sleeps; the performance
    // counter of Windows goes on.
    return std::chrono::steady_clock::now().time_since_epoch();
#endif
}

void SystemClock::sleep(std::chrono::nanoseconds duration) {
    // Some systems return early.
    const auto end = now() + duration;
    for (auto left = duration; left > std::chrono::nanoseconds::zero(); left = end - now()) {
        std::this_thread::sleep_for(left);
    }
}

LocalTime SystemClock::local_time() const {
    const std::time_t seconds = std::time(nullptr);
    std::tm parts = {};
#ifdef _WIN32
    localtime_s(&parts, &seconds);
#else
    localtime_r(&seconds, &parts);
#endif
    return LocalTime{.year = parts.tm_year + 1900,
                     .month = parts.tm_mon + 1,
                     .day = parts.tm_mday,
                     .hour = parts.tm_hour,
                     .minute = parts.tm_min,
                     .second = parts.tm_sec};
}

} // namespace kv408
