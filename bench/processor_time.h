#pragma once

#include <chrono>
#include <ctime>

namespace kv408 {

/// Processor time of the whole process so far, all its threads included.
inline std::chrono::nanoseconds processor_time() {
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace kv408
