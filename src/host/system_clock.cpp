#include "host/system_clock.h"

#include <ctime>
#include <thread>

namespace kv408 {

std::chrono::nanoseconds SystemClock::now() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

void SystemClock::sleep(std::chrono::nanoseconds duration) {
    // Some systems wake a sleeper early.
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
