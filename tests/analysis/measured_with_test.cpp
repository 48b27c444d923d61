#include "analysis/measured_with.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(MeasuredWith, CodesAndPointsBecomeLevelsAndTimes) {
    ChannelSweep sweep;
    sweep.first_time = 1000.0;
    sweep.time_per_point = 8.0;
    sweep.conversion = {.inverted = false, .atten = 0.5, .vtfactor = 2.0, .swoffset = 3};
    const MeasuredWith with = measured_with(SweepMode::block, sweep);
    EXPECT_DOUBLE_EQ(time_of(with, 0), 1000.0);
    EXPECT_DOUBLE_EQ(time_of(with, 12.5), 1100.0);
    EXPECT_DOUBLE_EQ(level_of(with, 2045), 0.0);
    EXPECT_DOUBLE_EQ(level_of(with, 2145), 100.0);
    EXPECT_DOUBLE_EQ(level_at(with, 2145.5), 100.5);
    EXPECT_DOUBLE_EQ(code_at(with, 100.5), 2145.5);
    EXPECT_DOUBLE_EQ(level_step(with), 1.0);
}

TEST(MeasuredWith, AnInvertedChannelsHigherCodesAreLowerLevels) {
    ChannelSweep sweep;
    sweep.conversion = {.inverted = true, .atten = 0.5, .vtfactor = 1.0, .swoffset = 0};
    const MeasuredWith with = measured_with(SweepMode::block, sweep);
    EXPECT_DOUBLE_EQ(level_of(with, 2048), 0.0);
    EXPECT_DOUBLE_EQ(level_of(with, 2148), -50.0);
    EXPECT_DOUBLE_EQ(level_at(with, 2149), -50.5);
    EXPECT_DOUBLE_EQ(level_at(with, -2.0), 1025.0);
    EXPECT_DOUBLE_EQ(code_at(with, 1025.0), -2.0);
    EXPECT_DOUBLE_EQ(level_step(with), -0.5);
}

TEST(MeasuredWith, DiffersWithEveryChangeOfWhatIsMeasured) {
    const ChannelSweep before;
    const auto differs = [&](auto change) {
        ChannelSweep after = before;
        change(after);
        return measured_with(SweepMode::block, before) != measured_with(SweepMode::block, after);
    };
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.time_per_point = 9.0; }));
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.first_time = 9.0; }));
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.gain = low_gain; }));
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.conversion.inverted = true; }));
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.conversion.vtfactor = 2.0; }));
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.trigger.positive = false; }));
    EXPECT_TRUE(differs([](ChannelSweep& sweep) { sweep.trigger.level_mv = 1.0; }));
    EXPECT_NE(measured_with(SweepMode::block, before), measured_with(SweepMode::point, before));
    EXPECT_FALSE(differs([](ChannelSweep& sweep) { sweep.mv_per_division = 10.0; }));
    EXPECT_FALSE(differs([](ChannelSweep& sweep) { sweep.position = 1.0; }));
}

} // namespace
} // namespace kv408
