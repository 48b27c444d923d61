// What reading a key runs, and that no handler takes a value away that was read.

#include <gtest/gtest.h>

#include "support/settings_rig.h"

namespace kv408 {
namespace {

TEST(ReadHandlers, PositionMovesMarkerTraceAndOffset) {
    SettingsRig rig;
    rig.load("ch1text.top\t1024\r\nch2text.top\t0\r\n");
    EXPECT_EQ(rig.channels[0].pos, 0);
    EXPECT_EQ(rig.channels[1].pos, 512);
    // At 0.1V/div, 0.32 pixels per code: 256 / 0.32 = 800 codes from the centre.
    EXPECT_EQ(rig.channels[0].offsetdac, 1248);
    EXPECT_EQ(rig.channels[1].offsetdac, 2848);
    EXPECT_EQ(rig.panel.channel[0].text.marked(), 0);
    EXPECT_EQ(rig.panel.channel[1].text.marked(), 512);
}

TEST(ReadHandlers, TheSourceTakesTheLevelThatIsHeldThen) {
    SettingsRig rig;
    rig.load("trigsource\t1\r\ntrigpos2\t3000\r\n");
    EXPECT_EQ(rig.trigger_state.trigpos, 2048);
    EXPECT_EQ(rig.trigger_state.saved_trigpos[1], 3000);
    SettingsRig other;
    other.load("trigpos2\t3000\r\nhyst2\t99\r\ntrigsource\t1\r\n");
    EXPECT_EQ(other.trigger_state.trigpos, 3000);
    EXPECT_EQ(other.panel.shyst.value(), 99);
    EXPECT_EQ(other.panel.trlevelmv.caption(), " 952mV");
}

TEST(ReadHandlers, TheSourceUploadsTheTriggerAndTheRangeItsGain) {
    SettingsRig rig;
    rig.load("trigpos2\t3000\r\nhyst2\t99\r\ntrigsource\t1\r\nch2vdiv\t3\r\n");
    const auto frames = rig.bridge.frames();
    // Start, command, five arguments, and their sum.
    ASSERT_EQ(frames.size(), 3U);
    EXPECT_EQ(frames[0], (FakeBridge::Frame{4, 8, 11, 184, 21, 255, 99,
                                            (8 + 11 + 184 + 21 + 255 + 99) % 256}));
    EXPECT_EQ(frames[1].at(1), 27);
    EXPECT_EQ(frames[2].at(1), 9);
    EXPECT_EQ(frames[2].at(3), 1);
}

TEST(ReadHandlers, KeysInAnotherOrderAreAppliedInThatOrder) {
    SettingsRig rig;
    rig.load("TabStrip2\tHPOS\r\nseltimediv\t7\r\n");
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "CH1");
    SettingsRig other;
    other.load("ch1vdiv\t5\r\nch1vdiv\t1\r\n");
    EXPECT_EQ(other.panel.channel[0].vdiv.text(), "0.2V");
}

TEST(ReadHandlers, ATargetThatTheStripDoesNotHaveIsPassedOver) {
    for (const char* target : {"HPOS", "C1", "", "ch1", "anything"}) {
        SettingsRig rig;
        rig.load("seltimediv\t7\r\nTabStrip2\tCH2\r\n");
        EXPECT_TRUE(rig.settings.setConfigVal("TabStrip2", target)) << target;
        EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "CH2") << target;
    }
    SettingsRig fast;
    fast.load("seltimediv\t8\r\nTabStrip2\tHPOS\r\n");
    EXPECT_EQ(fast.panel.tabstrip2.selected_key(), "HPOS");
}

TEST(ReadHandlers, TwoAnnotationLinesLeaveTwoBoxesChecked) {
    SettingsRig rig;
    rig.load("chkmeasanno\t 0 \r\nchkmeasanno\t 2 \r\n");
    EXPECT_TRUE(rig.panel.measurement[0].annotate.checked());
    EXPECT_FALSE(rig.panel.measurement[1].annotate.checked());
    EXPECT_TRUE(rig.panel.measurement[2].annotate.checked());
    EXPECT_EQ(rig.pressed, (std::vector<int>{0, 2}));
    rig.press_annotation(2);
    EXPECT_FALSE(rig.panel.measurement[0].annotate.checked());
}

TEST(ReadHandlers, AnAnnotationLineTakesThePlaceOfWhatWasMarkedBefore) {
    SettingsRig rig;
    rig.panel.measurement[1].annotate.put_checked(true);
    rig.load("chkmeasanno\t 0 \r\n");
    EXPECT_TRUE(rig.panel.measurement[0].annotate.checked());
    EXPECT_FALSE(rig.panel.measurement[1].annotate.checked());
    rig.load("chkmeasanno\t 1 \r\nchkmeasanno\t 2 \r\n");
    EXPECT_FALSE(rig.panel.measurement[0].annotate.checked());
    EXPECT_TRUE(rig.panel.measurement[1].annotate.checked());
    EXPECT_TRUE(rig.panel.measurement[2].annotate.checked());
    rig.load("chkmeasanno\t 3 \r\n");
    EXPECT_FALSE(rig.panel.measurement[0].annotate.checked());
    EXPECT_TRUE(rig.panel.measurement[1].annotate.checked());
    EXPECT_TRUE(rig.panel.measurement[2].annotate.checked());
}

TEST(ReadHandlers, WithoutAnAnnotationLineTheBoxesStayAsTheyAre) {
    SettingsRig rig;
    rig.load("eyeon\t1\r\n");
    for (const MeasurementControls& slot : rig.panel.measurement) {
        EXPECT_FALSE(slot.annotate.checked());
    }
    rig.panel.measurement[1].annotate.put_checked(true);
    rig.load("eyeon\t1\r\n");
    EXPECT_TRUE(rig.panel.measurement[1].annotate.checked());
}

TEST(ReadHandlers, AStoredValueIsNotOverwrittenByAWheelThatStoodElsewhere) {
    SettingsRig rig;
    rig.load("TabStrip3\t1\r\nTabStrip2\tC1\r\n");
    ASSERT_EQ(rig.panel.tabstrip2.selected_key(), "C1");
    rig.load("intcr1vpos\t33\r\ncursorselect\t1\r\n");
    EXPECT_EQ(rig.cursor_state.vpos[0], 33);
    EXPECT_EQ(rig.panel.slider1.Value(), 1024 - 2 * 33);
    rig.load("TabStrip3\t2\r\nTabStrip2\tC2\r\nintcr2hpos\t639\r\ncursorselect\t0\r\n");
    EXPECT_EQ(rig.cursor_state.hpos[1], 639);
}

TEST(ReadHandlers, ALevelBetweenTheWheelsStepsStays) {
    for (const int level : {2046, 2049, 2050, 2051, 1, 4095}) {
        SettingsRig rig;
        rig.load("TabStrip2\tTRIG\r\ntrigpos1\t" + std::to_string(level) + "\r\ntrigsource\t0\r\n");
        EXPECT_EQ(rig.trigger_state.trigpos, level);
        rig.adjust.sliderupdate();
        EXPECT_EQ(rig.trigger_state.trigpos, level);
        EXPECT_EQ(rig.trigger_state.saved_trigpos[0], level);
        // Turned by one step, the wheel takes the level along.
        const std::int32_t wheel = rig.panel.slider1.Value();
        rig.panel.slider1.turn(wheel == 1024 ? -1 : 1);
        EXPECT_EQ(rig.trigger_state.trigpos, 4 * (wheel == 1024 ? 1023 : wheel + 1));
    }
}

TEST(ReadHandlers, ADelayBetweenTheWheelsStepsStays) {
    for (const char* order : {"TabStrip2\tHPOS\r\nslenps1\t1\r\nhorpos\t12345\r\n",
                              "horpos\t12345\r\nslenps1\t1\r\nTabStrip2\tHPOS\r\n"}) {
        SettingsRig rig;
        rig.load(order);
        rig.adjust.sliderupdate();
        EXPECT_EQ(rig.panel.channel[0].psofset.text(), "12345");
        // 12345 ps in points of 313 ps stretched by 1.0016: 39.504.
        EXPECT_EQ(rig.channels[0].delaypts, 40);
        EXPECT_EQ(rig.panel.slider1.Value(), 65535 - 12345 - 32768);
    }
}

TEST(ReadHandlers, TheWheelStartsAtTheDelayOfTheChannelThatItMoves) {
    SettingsRig rig;
    rig.load("horpos\t1000\r\nhorpos2\t9000\r\nslenps1\t1\r\nslenps2\t0\r\nTabStrip2\tHPOS\r\n");
    EXPECT_EQ(rig.panel.slider1.Value(), 65535 - 1000 - 32768);
    rig.panel.slider1.turn(-1);
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "1064");
    EXPECT_EQ(rig.panel.channel[1].psofset.text(), "9000");
}

TEST(ReadHandlers, WhileSweepingTheSetUpCountsAsChanged) {
    for (const char* line : {"horpos\t5\r\n", "seltimediv\t3\r\n", "trigsource\t1\r\n",
                             "trigeredge\t1\r\n", "ch1vdiv\t5\r\n", "average\t1\r\n"}) {
        SettingsRig rig;
        rig.acquisition.acqrunning = true;
        rig.acquisition.scopestate = "scopech1f";
        rig.load(line);
        EXPECT_EQ(rig.acquisition.scopestate, "changes") << line;
    }
}

} // namespace
} // namespace kv408
