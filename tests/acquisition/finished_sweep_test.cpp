// What a finished sweep says of itself.

#include <gtest/gtest.h>

#include "acquisition/point_pass_rig.h"

namespace kv408 {
namespace {

/// A block in which pair k (from 0) holds the code 2000 + k.
std::vector<int> ramp() {
    std::vector<int> block;
    for (int pair = 0; pair < 650; ++pair) {
        block.push_back((2000 + pair) / 256);
        block.push_back((2000 + pair) % 256);
    }
    return block;
}

/// A started program that takes blocks.
struct BlocksRig : AcquisitionRig {
    BlocksRig() { start(); }

    /// Lets a block of channel index `channel` come.
    const ChannelSweep& block_of(Channel channel) {
        acquisition.scopestate = channel == 0 ? "scopech1f" : "scopech2f";
        bridge.receive(ramp());
        block.sdisplaych(channel);
        return *sweeps.last()->channel.at(channel);
    }

    static void choose(ListBox& list, const std::string& text) {
        const auto& entries = list.entries();
        const auto found = std::find(entries.begin(), entries.end(), text);
        list.set_index(static_cast<int>(found - entries.begin()));
    }
};

TEST(FinishedSweep, ABlockHasAllPointsThatCameAndTheirTimes) {
    BlocksRig rig;
    BlocksRig::choose(rig.panel.seltimediv, "25ps/div");
    rig.acquisition.offset = {1500, 0}; // the delays that were sent
    const ChannelSweep& sweep = rig.block_of(ch1);
    EXPECT_TRUE(sweep.whole);
    ASSERT_EQ(sweep.codes.size(), 650U);
    ASSERT_EQ(sweep.mv.size(), 650U);
    for (int point = 0; point < 650; ++point) {
        EXPECT_EQ(sweep.codes.at(static_cast<std::size_t>(point)), 2000 + point);
        // Half a millivolt per code at 0.1V/div.
        EXPECT_EQ(sweep.mv.at(static_cast<std::size_t>(point)), (2000 + point - 2048) / 2.0);
    }
    EXPECT_EQ(sweep.first_time, 1500.0);
    EXPECT_EQ(sweep.time_per_point, 1.0);
    // 64 columns per division of 25 ps, on which each point is shown two or three times.
    EXPECT_EQ(sweep.columns_per_second, 2.56e12);
    EXPECT_EQ(sweep.columns.raw, rig.samples[ch1].raw);
    EXPECT_EQ(sweep.columns.mv, rig.samples[ch1].mv);
    EXPECT_EQ(sweep.columns.raw[3], 2000);
    EXPECT_EQ(sweep.columns.raw[4], 2001);
    EXPECT_EQ(rig.block_of(ch2).first_time, 0.0);
    EXPECT_EQ(rig.sweeps.last()->mode, SweepMode::block);
}

TEST(FinishedSweep, TellsWhatItWasTakenWithWhateverIsSelectedLater) {
    BlocksRig rig;
    ChannelControls& controls = rig.panel.channel[ch2];
    BlocksRig::choose(controls.vdiv, "20mV");
    controls.inviatr.set_checked(true);
    controls.invert.set_checked(true);
    rig.panel.average.set_checked(true);
    rig.channels[ch2].swoffset = 3;
    rig.channels[ch2].pos = 96;
    BlocksRig::choose(rig.panel.trigsource, "TRIG2");
    BlocksRig::choose(rig.panel.trigeredge, "Negative");
    rig.panel.shyst.set_value(25);
    rig.trigger_state.trigpos = 2148;
    rig.panel.trtout.set_text("1000");
    rig.trigger.settriger();
    rig.acquisition.offset = {0, 70};
    rig.block_of(ch2);
    const auto kept = rig.sweeps.last();
    BlocksRig::choose(controls.vdiv, "0.5V");
    controls.inviatr.set_checked(false);
    controls.invert.set_checked(false);
    BlocksRig::choose(rig.panel.seltimediv, "1us/div");
    rig.panel.average.set_checked(false);
    rig.channels[ch2].pos = 256;
    BlocksRig::choose(rig.panel.trigsource, "TRIG1");
    rig.block_of(ch1);

    const ChannelSweep& sweep = *kept->channel[ch2];
    EXPECT_EQ(sweep.gain, high_gain);
    EXPECT_EQ(sweep.mv_per_division, 20.0);
    EXPECT_EQ(sweep.conversion,
              (Conversion{.inverted = true, .atten = 1.0 / 6.0, .vtfactor = 2.0, .swoffset = 3}));
    EXPECT_TRUE(sweep.averaged);
    EXPECT_EQ(sweep.position, 2.5) << "160 rows above the centre, 64 per division";
    EXPECT_EQ(sweep.delay, 70.0);
    // 100 codes of one millivolt each, doubled by "Input Via Trigger" of the source's channel.
    EXPECT_EQ(sweep.trigger, (TriggerSetting{.source = ch2,
                                             .positive = false,
                                             .level_mv = 200.0,
                                             .hysteresis = 25,
                                             .timeout = 1000}));
    EXPECT_EQ(sweep.codes[0], 2000) << "as it was sent";
    // 4096 - 2003 = 2093: 45 codes above 0 V, a sixth of a millivolt each, doubled.
    EXPECT_DOUBLE_EQ(sweep.mv[0], 15.0);
    EXPECT_EQ(sweep.time_per_point, 313.0);
    EXPECT_EQ(sweep.columns_per_second, 3.2e9);

    const ChannelSweep& other = *rig.sweeps.last()->channel[ch1];
    EXPECT_EQ(other.mv_per_division, 100.0);
    EXPECT_EQ(other.gain, low_gain);
    EXPECT_FALSE(other.averaged);
    EXPECT_EQ(other.conversion.vtfactor, 1.0);
    EXPECT_EQ(other.position, 0.0);
    EXPECT_EQ(other.trigger.source, ch1);
}

TEST(FinishedSweep, ItsTriggerIsTheOneThatTheInstrumentHasAcknowledged) {
    BlocksRig rig;
    rig.trigger_state.trigpos = 2060;
    rig.trigger.settriger();
    rig.bridge.on_frame = {}; // nothing is acknowledged from now on
    rig.trigger_state.trigpos = 2100;
    rig.trigger.settriger();
    EXPECT_EQ(rig.block_of(ch1).trigger.level_mv, 12.0);
}

TEST(FinishedSweep, BlocksOfBothChannelsAreOneSweep) {
    BlocksRig rig;
    std::vector<std::pair<std::uint64_t, bool>> told;
    rig.sweeps.on_finished(
        [&](const auto& sweep) { told.emplace_back(sweep->number, sweep->complete); });
    rig.clock.sleep(std::chrono::seconds(5));
    for (int block = 0; block < 4; ++block) {
        rig.block_of(block % 2 == 0 ? ch1 : ch2);
    }
    EXPECT_EQ(told, (std::vector<std::pair<std::uint64_t, bool>>{
                        {1, false}, {1, true}, {2, false}, {2, true}}));
    EXPECT_EQ(rig.sweeps.last()->time, rig.clock.time_of_day());
}

TEST(FinishedSweep, ABlockThatDoesNotComeIsNoSweep) {
    BlocksRig rig;
    int told = 0;
    rig.sweeps.on_finished([&](const auto&) { ++told; });
    rig.acquisition.scopestate = "scopech1f";
    rig.block.sdisplaych(ch1);
    rig.bridge.receive({26, 10});
    rig.block.sdisplaych(ch1);
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.status(), "Waiting For TRIGGER");
    EXPECT_EQ(told, 0);
    EXPECT_EQ(rig.measuring.measured, 2) << "what there is is measured once more";
}

TEST(FinishedSweep, APassHasAPointForEachColumnFromOneStepOn) {
    PassRig rig(true, true);
    rig.acquisition.offset = {400, 400};
    rig.pass.sdisplay1ghzt();
    const Sweep& sweep = *rig.sweeps.last();
    EXPECT_TRUE(sweep.complete);
    EXPECT_EQ(sweep.mode, SweepMode::point);
    for (const Channel channel : both_channels) {
        const ChannelSweep& part = *sweep.channel.at(channel);
        EXPECT_TRUE(part.whole);
        EXPECT_EQ(part.first_time, 12.0) << "delays are for blocks";
        EXPECT_EQ(part.delay, 400.0);
        EXPECT_EQ(part.time_per_point, 12.0);
        ASSERT_EQ(part.codes.size(), 640U);
        ASSERT_EQ(part.mv.size(), 640U);
        for (std::size_t point = 0; point < 640; ++point) {
            // The channels take turns.
            const auto code = static_cast<int>(1000 + 2 * point + channel);
            EXPECT_EQ(part.codes.at(point), code);
            EXPECT_EQ(part.mv.at(point), (code - 2048) / 2.0);
            EXPECT_EQ(part.columns.mv.at(point + 1), part.mv.at(point));
        }
    }
}

TEST(FinishedSweep, APassThatIsBrokenOffEndsAtItsLastPointAndIsNotWhole) {
    PassRig rig(false, true);
    rig.pass.sdisplay1ghzt();
    const auto before = rig.sweeps.last();
    rig.fetched = 0;
    rig.answer = [&rig](int point) {
        if (point == 5) {
            rig.time_base_state = {};
            rig.acquisition.scopestate = "changes";
        }
        return std::vector{8, point};
    };
    rig.pass.sdisplay1ghzt();
    const Sweep& sweep = *rig.sweeps.last();
    const ChannelSweep& part = *sweep.channel[ch2];
    EXPECT_FALSE(part.whole);
    EXPECT_FALSE(sweep.complete);
    EXPECT_EQ(part.codes, (std::vector<std::int16_t>{2049, 2050, 2051, 2052, 2053}));
    EXPECT_EQ(part.time_per_point, 12.0) << "that of the pass";
    EXPECT_EQ(part.columns.raw[5], 2053);
    EXPECT_EQ(part.columns.raw[6], before->channel[ch2]->columns.raw[6]);
    EXPECT_EQ(sweep.channel[ch1], before->channel[ch1]);
}

TEST(FinishedSweep, APassThatWaitsOrFailsIsNone) {
    for (const std::vector<int>& reply : {std::vector{16, 10}, std::vector<int>{}}) {
        PassRig rig(true, false);
        const auto before = rig.sweeps.last();
        rig.answer = [&reply](int point) { return point == 5 ? reply : std::vector{8, 0}; };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.sweeps.last(), before);
    }
}

} // namespace
} // namespace kv408
