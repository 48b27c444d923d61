#include "calibration/corrections.h"

#include <cmath>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(Corrections, AGainRatioIsAcceptedFromNineTenthsOnAndBelowElevenTenths) {
    EXPECT_TRUE(accepted_gain_ratio(0.9));
    EXPECT_FALSE(accepted_gain_ratio(std::nextafter(0.9, 0.0)));
    EXPECT_FALSE(accepted_gain_ratio(1.1));
    EXPECT_TRUE(accepted_gain_ratio(std::nextafter(1.1, 0.0)));
}

TEST(Corrections, AGainFollowsTheRatioOfExpectedToMeasured) {
    // 10000 * 1000 / 1030 = 9708.74
    EXPECT_EQ(corrected_gain(10000, 1030, 1000.0), 9709);
    // 9900 * 200 / 194 = 10206.19
    EXPECT_EQ(corrected_gain(9900, 194, 200.0), 10206);
    EXPECT_EQ(corrected_gain(10000, 1000, 1000.0), 10000);
    // 1000 / 1111 = 0.90009, 1000 / 1112 = 0.8993, 1000 / 910 = 1.0989, 1000 / 909 = 1.1001
    EXPECT_EQ(corrected_gain(10000, 1111, 1000.0), 9001);
    EXPECT_EQ(corrected_gain(10000, 1112, 1000.0), std::nullopt);
    EXPECT_EQ(corrected_gain(10000, 910, 1000.0), 10989);
    EXPECT_EQ(corrected_gain(10000, 909, 1000.0), std::nullopt);
    // 200 / 222 = 0.9009, 200 / 223 = 0.897, 200 / 182 = 1.0989, 200 / 181 = 1.105
    EXPECT_EQ(corrected_gain(10000, 222, 200.0), 9009);
    EXPECT_EQ(corrected_gain(10000, 223, 200.0), std::nullopt);
    EXPECT_EQ(corrected_gain(10000, 182, 200.0), 10989);
    EXPECT_EQ(corrected_gain(10000, 181, 200.0), std::nullopt);
}

TEST(Corrections, NothingMeasuredIsNoGain) {
    EXPECT_EQ(corrected_gain(10000, 0, 1000.0), std::nullopt);
}

TEST(Corrections, AGainStopsAtTheEndOfSixteenBits) {
    // 32000 * 1000 / 910 = 35164.8
    EXPECT_EQ(corrected_gain(32000, 910, 1000.0), 32767);
}

TEST(Corrections, AnOffsetIsCorrectedByTheMeanInCodes) {
    EXPECT_EQ(codes_per_millivolt({.high_gain = true, .via_trigger = false}), 6.0);
    EXPECT_EQ(codes_per_millivolt({.high_gain = true, .via_trigger = true}), 3.0);
    EXPECT_EQ(codes_per_millivolt({.high_gain = false, .via_trigger = false}), 2.0);
    EXPECT_EQ(codes_per_millivolt({.high_gain = false, .via_trigger = true}), 1.0);
    EXPECT_EQ(corrected_offset(2048, 3.5, 6.0), 2027);
    EXPECT_EQ(corrected_offset(2033, -10.0, 2.0), 2053);
    // Halves to even: 0.25 * 2 = 0.5 counts as 0, 0.75 * 2 = 1.5 as 2.
    EXPECT_EQ(corrected_offset(2048, 0.25, 2.0), 2048);
    EXPECT_EQ(corrected_offset(2048, 0.75, 2.0), 2046);
}

TEST(Corrections, AnInputIsQuietBelowThirtyMillivolts) {
    EXPECT_TRUE(quiet_enough(std::nextafter(30.0, 0.0)));
    EXPECT_FALSE(quiet_enough(30.0));
    EXPECT_TRUE(quiet_enough(0.1));
    EXPECT_FALSE(quiet_enough(0.0));
}

TEST(Corrections, ATimeScaleIsCorrectedByTheErrorOfTheFrequency) {
    EXPECT_EQ(corrected_time_scale(10000, 10000000), 10000);
    // e = -0.02: 9950 - 199
    EXPECT_EQ(corrected_time_scale(9950, 10200000), 9751);
    EXPECT_EQ(corrected_time_scale(10000, 9000001), 11000);
    EXPECT_EQ(corrected_time_scale(10000, 10999999), 9000);
    EXPECT_EQ(corrected_time_scale(10000, 9000000), std::nullopt);
    EXPECT_EQ(corrected_time_scale(10000, 11000000), std::nullopt);
    EXPECT_EQ(corrected_time_scale(10000, 0), std::nullopt);
}

} // namespace
} // namespace kv408
