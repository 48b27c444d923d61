// Numbers and dates as they stand in files.

#include <clocale>

#include <gtest/gtest.h>

#include "export/date_text.h"
#include "export/number_text.h"
#include "export/time_per_div.h"
#include "support/virtual_clock.h"

namespace kv408 {
namespace {

using std::chrono::hours;
using std::chrono::minutes;

TEST(NumberText, HasTwelveDigitsAtMostAndSmallExponents) {
    EXPECT_EQ(number_text(0.0), "0");
    EXPECT_EQ(number_text(-0.0), "0");
    EXPECT_EQ(number_text(0.25), "0.25");
    EXPECT_EQ(number_text(-1.0 / 3.0), "-0.333333333333");
    EXPECT_EQ(number_text(3.13e-10), "3.13e-10");
    EXPECT_EQ(number_text(2.0e-7 / 3.0), "6.66666666667e-08");
    EXPECT_EQ(number_text(649 * 1562500e-12 + 1e-12), "0.001014062501");
}

TEST(PlainText, HasItsDigitsWithoutAPrefix) {
    EXPECT_EQ(plain_text(48.5, 5), "48.500");
    EXPECT_EQ(plain_text(0.5, 5), "0.50000");
    EXPECT_EQ(plain_text(0.000123, 4), "0.0001");
    EXPECT_EQ(plain_text(-1234567.8, 5), "-1234568");
    EXPECT_EQ(plain_text(0.0, 3), "0.000");
    EXPECT_EQ(plain_text(10.0, 5), "10.000");
}

TEST(NumberText, HasAPointWhateverTheLocale) {
    // No locale of another name need be installed: the point would come from this one.
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    EXPECT_EQ(number_text(0.5), "0.5");
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST(DateText, IsIsoWithItsZone) {
    const auto time =
        std::chrono::sys_days(std::chrono::year(2026) / 1 / 1) + std::chrono::milliseconds(59999);
    EXPECT_EQ(date_text(time, minutes(0)), "2026-01-01T00:00:59.999+00:00");
    EXPECT_EQ(date_text(time, minutes(345)), "2026-01-01T05:45:59.999+05:45");
    EXPECT_EQ(date_text(time, minutes(-570)), "2025-12-31T14:30:59.999-09:30");
}

TEST(UtcOffset, IsWhatTheLocalTimeIsAheadOfTheSystems) {
    VirtualClock clock; // at 1970-01-01 00:00:00 UTC
    clock.set_local_time({.year = 1970, .month = 1, .day = 1, .hour = 5, .minute = 45});
    EXPECT_EQ(utc_offset(clock), minutes(345));
    clock.set_local_time({.year = 1969, .month = 12, .day = 31, .hour = 14, .minute = 30});
    EXPECT_EQ(utc_offset(clock), minutes(-570));
    clock.advance(std::chrono::milliseconds(1900)); // between the two looks
    EXPECT_EQ(utc_offset(clock), minutes(-570));
}

TEST(TimePerDiv, ReadsAndIsReadAsOnThePanel) {
    for (const auto& [picoseconds, text] :
         {std::pair{25.0, "25ps"}, {1000.0, "1ns"}, {20000.0, "20ns"}, {5e8 / 10, "50us"}}) {
        EXPECT_EQ(time_per_div_text(picoseconds), text);
        EXPECT_EQ(time_per_div_in(text), picoseconds);
    }
    // What is left of 64 columns at their rate.
    EXPECT_EQ(time_per_div_text(64 / 3.2e9 * 1e12), "20ns");
    EXPECT_EQ(time_per_div_in("soon"), std::nullopt);
    EXPECT_EQ(time_per_div_in("0ns"), std::nullopt);
}

} // namespace
} // namespace kv408
