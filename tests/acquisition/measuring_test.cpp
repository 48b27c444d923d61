// When the sweeps are measured and the results shown.

#include <gtest/gtest.h>

#include "acquisition/point_pass_rig.h"

namespace kv408 {
namespace {

/// A started program that has asked for a block of channel 1. Each time it measures, the instrument
/// must already have been asked for the next block, so that it does not wait for the program.
struct AskedRig : AcquisitionRig {
    AskedRig() {
        start();
        acquisition.scopestate = "scopech1f";
        measuring.measured = 0;
        const std::size_t before = bridge.frames().size();
        measuring.on_measure = [this, before] {
            EXPECT_EQ(bridge.frames().size(), before + 1) << "the instrument waits meanwhile";
        };
    }
};

TEST(Measuring, ABlockIsMeasuredOnceTheNextIsAskedFor) {
    for (const Channel channel : both_channels) {
        AskedRig rig;
        rig.bridge.receive(std::vector<int>(1300, 8));
        rig.block.sdisplaych(channel);
        EXPECT_EQ(rig.measuring.measured, 1);
    }
}

TEST(Measuring, EveryRearmMeasures) {
    AskedRig waiting;
    waiting.bridge.receive({26, 10});
    waiting.block.sdisplaych(ch1);
    EXPECT_EQ(waiting.measuring.measured, 0) << "the reply may still grow";
    waiting.block.sdisplaych(ch1);
    EXPECT_EQ(waiting.measuring.measured, 1);

    AskedRig silent;
    silent.block.sdisplaych(ch1);
    EXPECT_EQ(silent.measuring.measured, 1);
}

TEST(Measuring, AnUnfinishedBlockIsNotMeasured) {
    AskedRig rig;
    rig.bridge.receive(std::vector<int>(1299, 8));
    rig.block.sdisplaych(ch1);
    EXPECT_EQ(rig.measuring.measured, 0);
}

TEST(Measuring, ACompletePassIsMeasuredOnceWithAllItsPoints) {
    for (const bool second : {false, true}) {
        PassRig rig(true, second);
        rig.measuring.measured = 0;
        rig.measuring.on_measure = [&] {
            const auto& sweep = *rig.sweeps.last();
            EXPECT_EQ(sweep.channel[0]->codes.size(), 640U);
            EXPECT_EQ(sweep.channel[1]->codes.size(), second ? 640U : 0U);
        };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.measuring.measured, 1);
    }
}

TEST(Measuring, APassThatTheStateWordEndsIsMeasuredToo) {
    PassRig rig(true, false);
    rig.measuring.measured = 0;
    rig.answer = [&rig](int point) {
        if (point == 5) {
            rig.acquisition.scopestate = "changes";
        }
        return std::vector{8, 0};
    };
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.measuring.measured, 1);
}

TEST(Measuring, APassThatWaitsOrFailsIsNotMeasured) {
    for (const std::vector<int>& reply : {std::vector{16, 10}, std::vector<int>{}}) {
        PassRig rig(true, false);
        rig.measuring.measured = 0;
        rig.answer = [&reply](int point) { return point == 5 ? reply : std::vector{8, 0}; };
        rig.pass.sdisplay1ghzt();
        EXPECT_EQ(rig.measuring.measured, 0);
    }
}

TEST(Measuring, APassWithoutChannelsIsNotMeasured) {
    PassRig rig(false, false);
    rig.measuring.measured = 0;
    rig.pass.sdisplay1ghzt();
    EXPECT_EQ(rig.measuring.measured, 0);
}

TEST(Measuring, TheMarksOfTheResultsAreInThePictureThatIsDrawn) {
    AcquisitionRig rig;
    rig.start();
    rig.state_machine.cmdstop_Click();
    rig.measuring.on_show = [&rig] { rig.screen.calls.emplace_back("show"); };
    rig.acquisition.ready = {true, true};
    rig.acquisition.pending_refresh = true;
    rig.tick();
    EXPECT_TRUE(rig.screen.shows("show"));
}

TEST(Measuring, WithoutARedrawNoResultsAreShown) {
    AcquisitionRig rig;
    rig.start();
    rig.state_machine.cmdstop_Click();
    rig.measuring.shown = 0;
    rig.acquisition.ready = {true, false};
    rig.tick();
    EXPECT_EQ(rig.measuring.shown, 0);
}

} // namespace
} // namespace kv408
