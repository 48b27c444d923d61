#include "panel/trigger.h"

#include <gtest/gtest.h>

#include "support/panel_rig.h"

namespace kv408 {
namespace {

using Frame = FakeBridge::Frame;

Frame frame_8(int level, int code, int hysteresis_1, int hysteresis_2) {
    Frame frame = {4, 8, level / 256, level % 256, code, hysteresis_1, hysteresis_2};
    frame.push_back((8 + level / 256 + level % 256 + code + hysteresis_1 + hysteresis_2) % 256);
    return frame;
}

TEST(TriggerFrame, ChoosingASourceSendsItsLevelAndHysteresisAtOnce) {
    StartedPanelRig rig;
    rig.trigger_state.saved_trigpos = {2148, 1948};
    rig.trigger_state.hyst = {10, 33};
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    const auto frames = rig.bridge.frames();
    ASSERT_EQ(frames.size(), 2U);
    EXPECT_EQ(frames[0], frame_8(1948, 21, 255, 33));
    EXPECT_EQ(frames[1], (Frame{4, 27, 3, 232, 21, 255, 33, (27 + 3 + 232 + 21 + 255 + 33) % 256}));
    EXPECT_EQ(rig.panel.trlevelmv.caption(), "-100mV");
    EXPECT_EQ(rig.trigger_state.trigwheel, 487);
    EXPECT_EQ(rig.panel.shyst.value(), 33);
    rig.forget();
    PanelRig::choose(rig.panel.trigsource, "TRIG1");
    EXPECT_EQ(rig.bridge.frames().at(0), frame_8(2148, 1, 10, 255));
    EXPECT_EQ(rig.panel.trlevelmv.caption(), " 100mV");
    EXPECT_EQ(rig.trigger_state.trigwheel, 537);
}

TEST(TriggerFrame, TheWheelValueRoundsHalvesToEven) {
    StartedPanelRig rig;
    rig.trigger_state.saved_trigpos[0] = 2050; // 512.5
    PanelRig::choose(rig.panel.trigsource, "TRIG1");
    EXPECT_EQ(rig.trigger_state.trigwheel, 512);
    rig.trigger_state.saved_trigpos[0] = 2054; // 513.5
    PanelRig::choose(rig.panel.trigsource, "TRIG1");
    EXPECT_EQ(rig.trigger_state.trigwheel, 514);
}

TEST(TriggerFrame, TheReadOutCountsTheHalvingOfAnInputViaTheTrigger) {
    StartedPanelRig rig;
    rig.panel.channel[0].inviatr.set_checked(true);
    rig.trigger_state.saved_trigpos[0] = 2148;
    PanelRig::choose(rig.panel.trigsource, "TRIG1");
    EXPECT_EQ(rig.panel.trlevelmv.caption(), " 200mV");
}

TEST(TriggerFrame, TheTimeOutIsHeldWithinItsLimits) {
    for (const auto& [text, high, low] :
         {std::tuple{"5", 0, 10}, std::tuple{"70000", 255, 255}, std::tuple{"300", 1, 44}}) {
        StartedPanelRig rig;
        rig.panel.trtout.set_text(text);
        PanelRig::choose(rig.panel.trigsource, "TRIG1");
        EXPECT_EQ(rig.bridge.frames().at(1).at(2), high) << text;
        EXPECT_EQ(rig.bridge.frames().at(1).at(3), low) << text;
    }
}

TEST(TriggerFrame, AFailedUploadIsToldAndTheValuesStay) {
    StartedPanelRig rig;
    rig.trigger_state.saved_trigpos[1] = 2500;
    rig.bridge.on_frame = nullptr;
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    EXPECT_EQ(rig.boxes.texts(),
              (Texts{" SETTRIG Comm timed out", "Error Sending Data.", "error set triger"}));
    EXPECT_EQ(rig.trigger_state.trigpos, 2500);
    EXPECT_EQ(rig.bridge.frames().size(), 3U);
}

TEST(TriggerFrame, ASourceChosenInALinearityRunWaitsForTheNextSetUp) {
    PanelRig rig;
    rig.acquisition.scopestate = "calibrationint";
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_EQ(rig.acquisition.scopestate, "calibrationint");
}

TEST(TriggerFrame, ASourceChosenWhileRunningAlsoMarksTheSetUp) {
    StartedPanelRig rig;
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    EXPECT_NE(rig.acquisition.scopestate, "changes");
    rig.acquisition.acqrunning = true;
    PanelRig::choose(rig.panel.trigsource, "TRIG1");
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TriggerFrame, AnEdgeOnlyMarksTheSetUp) {
    StartedPanelRig rig;
    rig.acquisition.acqrunning = true;
    rig.forget();
    const auto before = rig.clock.now();
    PanelRig::choose(rig.panel.trigeredge, "Negative");
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_TRUE(rig.bridge.frames().empty());
    EXPECT_EQ(rig.clock.now() - before, std::chrono::milliseconds(100));
}

TEST(TriggerFrame, TheHysteresisBelongsToTheSelectedSource) {
    StartedPanelRig rig;
    rig.panel.shyst.set_value(77);
    EXPECT_EQ(rig.trigger_state.hyst[0], 77);
    EXPECT_EQ(rig.trigger_state.hyst[1], 10);
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    EXPECT_EQ(rig.panel.shyst.value(), 10);
    rig.acquisition.acqrunning = true;
    rig.panel.shyst.set_value(200);
    EXPECT_EQ(rig.trigger_state.hyst[1], 200);
    EXPECT_EQ(rig.trigger_state.hyst[0], 77);
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
}

TEST(TriggerFrame, SetToZeroIsForTheSelectedSourceAlone) {
    StartedPanelRig rig;
    rig.trigger_state.saved_trigpos = {2148, 1000};
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    rig.panel.tabstrip2.select(3);
    EXPECT_EQ(rig.panel.slider1.Value(), 250);
    rig.panel.trzero.click();
    EXPECT_EQ(rig.trigger_state.saved_trigpos, (std::array<std::int16_t, 2>{2148, 2048}));
    EXPECT_EQ(rig.trigger_state.trigpos, 2048);
    EXPECT_EQ(rig.trigger_state.trigwheel, 512);
    EXPECT_EQ(rig.panel.slider1.Value(), 512);
    EXPECT_TRUE(rig.acquisition.holdoff);
    EXPECT_EQ(rig.acquisition.holdoff_time, 1000);
}

TEST(TriggerFrame, TheWheelSetsTheLevelInStepsOfFourCodes) {
    StartedPanelRig rig;
    PanelRig::choose(rig.panel.trigsource, "TRIG2");
    rig.trigger_state.trigwheel = 600;
    rig.trigger.settrigfromwheel();
    EXPECT_EQ(rig.trigger_state.trigpos, 2400);
    EXPECT_EQ(rig.trigger_state.saved_trigpos, (std::array<std::int16_t, 2>{2048, 2400}));
}

TEST(TriggerFrame, TheTimeMarkerStaysOnTheScreen) {
    StartedPanelRig rig; // 20ns/div: 313 ps per column
    for (const auto& [text, column] :
         {std::pair{"0", 0}, std::pair{"3130", 0}, std::pair{"-3130", 10}, std::pair{"-156", 0},
          std::pair{"-200320", 640}, std::pair{"-9999999999", 640}, std::pair{"x", 640},
          std::pair{"", 0}}) {
        rig.panel.delaytrttdis.set_text(text);
        rig.panel.delaytrttdis.leave();
        EXPECT_EQ(rig.panel.ltp2.marked(), column) << text;
    }
    rig.panel.delaytrttdis.set_text("0");
    rig.trigger_state.trigsrcdelay = 31300;
    rig.trigger.trigposupdate();
    EXPECT_EQ(rig.panel.ltp2.marked(), 100);
}

TEST(TriggerFrame, TheTimeMarkerFollowsTheTimeBase) {
    StartedPanelRig rig; // 20ns/div: 313 ps per column
    rig.panel.delaytrttdis.set_text("-3130");
    rig.panel.delaytrttdis.leave();
    EXPECT_EQ(rig.panel.ltp2.marked(), 10);
    PanelRig::choose(rig.panel.seltimediv, "5ns/div"); // 79 ps per column
    EXPECT_EQ(rig.panel.ltp2.marked(), 40);            // 3130 / 79 = 39.6
}

} // namespace
} // namespace kv408
