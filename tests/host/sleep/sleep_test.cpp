// The computer sleeps: its clocks are played here.

#include <chrono>
#include <ctime>

#include <gtest/gtest.h>

#include "host/system_clock.h"
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/// How long this computer has slept, as the clocks below tell, seconds.
std::time_t& slept() {
    static std::time_t seconds = 0;
    return seconds;
}

} // namespace

/// The C library's clock_gettime() for whoever is linked with this: CLOCK_MONOTONIC stands still
/// while the computer sleeps, CLOCK_BOOTTIME does not.
extern "C" int clock_of_a_sleeper(clockid_t clock, std::timespec* time) noexcept
    __asm__("clock_gettime");

int clock_of_a_sleeper(clockid_t clock, std::timespec* time) noexcept {
    const long result = syscall(SYS_clock_gettime, clock, time);
    if (clock == CLOCK_BOOTTIME) {
        time->tv_sec += slept();
    }
    return static_cast<int>(result);
}

namespace kv408 {
namespace {

TEST(Sleep, OfTheComputerCounts) {
    const SystemClock clock;
    const auto before = clock.now();
    slept() += 3600;
    EXPECT_GE(clock.now() - before, std::chrono::hours(1));
    EXPECT_LT(clock.now() - before, std::chrono::minutes(61));
}

} // namespace
} // namespace kv408
