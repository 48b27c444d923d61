#include "export/exported_sweep.h"

#include <gtest/gtest.h>

#include "export/sample_sweep.h"

namespace kv408 {
namespace {

TEST(ExportedSweep, ABlockHasItsPointsFromTheDelayOn) {
    const ExportedSweep sweep = exported(block_sweep(64.0));
    ASSERT_EQ(sweep.channels.size(), 2U);
    const ExportedChannel& channel = sweep.channels[1];
    EXPECT_EQ(channel.name, "CH2");
    ASSERT_EQ(channel.mv.size(), 650U);
    EXPECT_EQ(channel.time(0), 64e-12);
    EXPECT_EQ(channel.time(649), 203201e-12); // 64 + 649 * 313
    EXPECT_EQ(channel.volts(0), 0.024);       // 48 codes of half a millivolt, inverted
    EXPECT_EQ(sweep.channels[0].volts(649), 0.3005);
    EXPECT_FALSE(sweep.same_times());
    EXPECT_TRUE(exported(block_sweep()).same_times());
}

TEST(ExportedSweep, APassHasItsPointsFromOneStepOn) {
    const ExportedSweep sweep = exported(pass_sweep());
    ASSERT_EQ(sweep.channels.size(), 1U);
    EXPECT_EQ(sweep.channels[0].name, "CH2");
    ASSERT_EQ(sweep.channels[0].mv.size(), 640U);
    EXPECT_EQ(sweep.channels[0].time(0), 7812e-12);
    EXPECT_EQ(sweep.channels[0].time(639), 4999680e-12);
    EXPECT_TRUE(sweep.same_times());
}

TEST(ExportedSweep, TellsWhatItWasTakenWith) {
    const ExportedSweep sweep = exported(block_sweep(64.0));
    EXPECT_EQ(sweep.date, "2026-11-22T13:05:09.250+01:00");
    EXPECT_EQ(sweep.mode, "block");
    EXPECT_EQ(sweep.number, 7U);
    EXPECT_DOUBLE_EQ(sweep.time_per_div, 20000.0);
    EXPECT_EQ(sweep.trigger, "TRIG2, negative edge, 0.012 V, hysteresis 10, time-out 1000 us");
    EXPECT_FALSE(sweep.averaged);
    EXPECT_EQ(sweep.channels[1].v_per_div, 0.2);
    EXPECT_EQ(sweep.channels[1].position, -1.0);
    EXPECT_EQ(sweep.channels[1].delay, 64.0);
    EXPECT_EQ(exported(pass_sweep()).mode, "point");
    EXPECT_TRUE(exported(pass_sweep()).averaged);
}

TEST(ExportedSweep, AChannelThatIsOffOrDidNotComeWholeIsLeftOut) {
    Sweep sweep = block_sweep();
    EXPECT_EQ(exported_sweep(sweep, {false, true}, sample_origin).channels.at(0).name, "CH2");
    EXPECT_TRUE(exported_sweep(sweep, {false, false}, sample_origin).channels.empty());
    sweep.came = {true, false};
    const ExportedSweep left = exported(sweep);
    ASSERT_EQ(left.channels.size(), 1U);
    EXPECT_EQ(left.channels[0].name, "CH1");
}

} // namespace
} // namespace kv408
