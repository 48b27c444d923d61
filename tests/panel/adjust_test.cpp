#include "panel/adjust.h"

#include <gtest/gtest.h>

#include "state/plot_geometry.h"
#include "support/panel_rig.h"
#include "support/time_base_lines.h"

namespace kv408 {
namespace {

/// Selects the adjust tab with `key`.
void select(PanelRig& rig, std::string_view key) {
    int position = 0;
    ASSERT_FALSE(hasnotab(rig.panel.tabstrip2, key, position)) << key;
    rig.panel.tabstrip2.select(position);
}

/// Adds the cursor tabs in mode `mode`.
void offer_cursors(PanelRig& rig, std::int16_t mode) {
    rig.panel.tabstrip2.add({"C1", "Cursor 1"});
    rig.panel.tabstrip2.add({"C2", "Cursor 2"});
    rig.cursor_state.cursormode = mode;
}

TEST(Adjust, ResultsFollowTheWheelBeforeThePictureIsDrawn) {
    for (const char* key : {"CH1", "CH2", "TRIG", "HPOS"}) {
        StartedPanelRig rig;
        select(rig, key);
        rig.forget();
        rig.measuring.on_show = [&rig] { rig.screen.calls.emplace_back("show"); };
        rig.panel.slider1.set_Value(rig.panel.slider1.Value());
        rig.screen.calls.clear();
        rig.adjust.sliderupdate();
        // The picture marks by what the results say.
        EXPECT_TRUE(rig.screen.shows("show")) << key;
    }
}

TEST(Adjust, RangeAndStepFollowTheTab) {
    StartedPanelRig rig;
    offer_cursors(rig, 1);
    for (const char* key : {"CH1", "CH2", "C1", "C2"}) {
        select(rig, key);
        EXPECT_EQ(rig.panel.slider1.Min(), 0) << key;
        EXPECT_EQ(rig.panel.slider1.Max(), 1024) << key;
        EXPECT_EQ(rig.panel.slider1.SlideStep(), 4) << key;
    }
    select(rig, "TRIG");
    EXPECT_EQ(rig.panel.slider1.Min(), 0);
    EXPECT_EQ(rig.panel.slider1.Max(), 1024);
    EXPECT_EQ(rig.panel.slider1.SlideStep(), 1);
    select(rig, "HPOS");
    EXPECT_EQ(rig.panel.slider1.Min(), -32768);
    EXPECT_EQ(rig.panel.slider1.Max(), 32767);
}

TEST(Adjust, TheDelayStepFollowsTheTimeBase) {
    StartedPanelRig rig;
    select(rig, "HPOS");
    for (const TimeBaseLine& line : time_base_lines) {
        if (line.pointmode) {
            continue; // without delays
        }
        PanelRig::choose(rig.panel.seltimediv, std::string(line.text));
        EXPECT_EQ(rig.panel.slider1.SlideStep(), line.wheel_step) << line.text;
    }
}

TEST(Adjust, AChannelsTabLaysItsMarkerOverTheOther) {
    StartedPanelRig rig;
    offer_cursors(rig, 1);
    const auto brought = [&rig] {
        return std::array{rig.panel.channel[0].text.times_brought_to_front(),
                          rig.panel.channel[1].text.times_brought_to_front()};
    };
    auto expected = brought();
    for (const char* key : {"TRIG", "CH2", "CH1", "HPOS", "CH2", "C1", "C2", "CH1"}) {
        select(rig, key);
        expected[0] += key == std::string("CH1") ? 1 : 0;
        expected[1] += key == std::string("CH2") ? 1 : 0;
        EXPECT_EQ(brought(), expected) << key;
    }
}

TEST(Adjust, ATabPutsTheWheelWhereItsQuantityIsAndChangesNothing) {
    StartedPanelRig rig;
    offer_cursors(rig, 1);
    rig.channels[0].marker_wheel = 100;
    rig.channels[1].marker_wheel = 200;
    rig.trigger_state.trigwheel = 300;
    rig.cursor_state.vpos = {212, 162};
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.acquisition.ready = {true, true};
    for (const auto& [key, value] :
         {std::pair{"CH2", 200}, std::pair{"CH1", 100}, std::pair{"TRIG", 300},
          std::pair{"HPOS", 32767}, std::pair{"C1", 600}, std::pair{"C2", 700}}) {
        select(rig, key);
        EXPECT_EQ(rig.panel.slider1.Value(), value) << key;
    }
    EXPECT_EQ(rig.cursor_state.cursormode, 2);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, true}));
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "0");
    rig.cursor_state.cursormode = 3;
    rig.cursor_state.hpos = {17, 600};
    select(rig, "C1");
    EXPECT_EQ(rig.panel.slider1.Value(), 17);
    EXPECT_EQ(rig.cursor_state.cursormode, 3);
    select(rig, "C2");
    EXPECT_EQ(rig.panel.slider1.Value(), 600);
    EXPECT_EQ(rig.cursor_state.cursormode, 4);
}

TEST(Adjust, AChannelFollowsTheWheel) {
    StartedPanelRig rig;
    select(rig, "CH1");
    rig.panel.slider1.drag_to(1024);
    EXPECT_EQ(rig.channels[0].pos, 0);
    EXPECT_EQ(rig.panel.channel[0].text.marked(), 0);
    // At 0.1V/div: 2048 - 256 / 0.32 = 1248.
    EXPECT_EQ(rig.channels[0].offsetdac, 1248);
    rig.panel.slider1.drag_to(0);
    EXPECT_EQ(rig.channels[0].pos, 512);
    EXPECT_EQ(rig.channels[0].offsetdac, 2848);
    rig.panel.slider1.drag_to(1021); // 1.5 rows round to 2
    EXPECT_EQ(rig.channels[0].pos, 2);
    rig.panel.slider1.drag_to(1023); // half a row rounds to 0
    EXPECT_EQ(rig.channels[0].pos, 0);
    EXPECT_EQ(rig.channels[1].pos, 256);
    select(rig, "CH2");
    rig.panel.slider1.drag_to(612);
    EXPECT_EQ(rig.channels[1].pos, 206);
    EXPECT_EQ(rig.channels[1].marker_wheel, 612);
}

TEST(Adjust, CommittingAChannelMarksTheSetUpButDraggingDoesNot) {
    StartedPanelRig rig;
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.acquisition.ready = {true, true};
    select(rig, "CH1");
    rig.panel.slider1.mouse_down(0, 0);
    rig.panel.slider1.mouse_move(left_mouse_button, 3, 0);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.panel.slider1.mouse_up();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
    EXPECT_FALSE(rig.acquisition.holdoff);
}

TEST(Adjust, TheTriggerLevelShowsItsLineAndMarksTheSetUpOnlyWhenCommitted) {
    StartedPanelRig rig;
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.acquisition.ready = {true, true};
    select(rig, "TRIG");
    rig.panel.slider1.mouse_down(0, 0);
    rig.panel.slider1.mouse_move(left_mouse_button, 10, 0);
    EXPECT_EQ(rig.trigger_state.trigpos, 522 * 4);
    EXPECT_TRUE(rig.acquisition.holdoff);
    EXPECT_EQ(rig.acquisition.holdoff_time, 1000);
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    rig.acquisition.holdoff = false;
    rig.panel.slider1.mouse_up();
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, true}));
    EXPECT_TRUE(rig.acquisition.holdoff);
}

TEST(Adjust, TurningTheDelayUpShortensIt) {
    StartedPanelRig rig;
    rig.panel.channel[0].slenps.set_checked(true);
    select(rig, "HPOS");
    rig.panel.slider1.drag_to(-32768);
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "65535");
    EXPECT_EQ(rig.panel.channel[1].psofset.text(), "0");
    // 65535 ps over 313 / 1.0016 ps per point.
    EXPECT_EQ(rig.channels[0].delaypts, 210);
    EXPECT_EQ(rig.channels[1].delaypts, 0);
    rig.panel.slider1.drag_to(32767);
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "0");
    EXPECT_EQ(rig.channels[0].delaypts, 0);
}

TEST(Adjust, TheDelayInPointsIsWideEnoughForTheFastestTimeBase) {
    StartedPanelRig rig;
    PanelRig::choose(rig.panel.seltimediv, "25ps/div");
    rig.panel.channel[1].slenps.set_checked(true);
    select(rig, "HPOS");
    rig.panel.slider1.turn_to(-32768);
    EXPECT_EQ(rig.channels[1].delaypts, 167770); // 65535 x 2.56 = 167769.6
    EXPECT_EQ(rig.panel.channel[1].hor_delay.caption(), "Delay:  65535ps");
    EXPECT_EQ(rig.panel.channel[0].hor_delay.caption(), "");
}

TEST(Adjust, CursorsFollowTheWheelInTheirOwnModeOnly) {
    StartedPanelRig rig;
    offer_cursors(rig, 3);
    select(rig, "C1");
    rig.panel.slider1.drag_to(1024);
    EXPECT_EQ(rig.cursor_state.hpos[0], 640);
    select(rig, "C2");
    rig.panel.slider1.drag_to(30);
    EXPECT_EQ(rig.cursor_state.hpos, (std::array<std::int16_t, 2>{640, 30}));
    rig.cursor_state.cursormode = 1;
    select(rig, "C2");
    EXPECT_EQ(rig.cursor_state.cursormode, 2);
    rig.panel.slider1.drag_to(1021);
    EXPECT_EQ(rig.cursor_state.vpos[1], 2);
    select(rig, "C1");
    rig.panel.slider1.drag_to(24);
    EXPECT_EQ(rig.cursor_state.vpos[0], 500);
}

TEST(Adjust, ATypedDelayIsTakenWithEnter) {
    StartedPanelRig rig;
    rig.panel.channel[1].slenps.set_checked(true);
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    rig.acquisition.ready = {true, true};
    TextBox& box = rig.panel.channel[1].psofset;
    box.focus();
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "HPOS");
    box.set_text("120");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
    box.enter();
    EXPECT_EQ(rig.panel.channel[1].hor_delay.caption(), "Delay:  120ps");
    EXPECT_EQ(rig.panel.slider1.Value(), 65535 - 120 - 32768);
    EXPECT_EQ(rig.channels[1].delaypts, 0); // 120 / 312.5 = 0.38
    EXPECT_EQ(rig.acquisition.scopestate, "changes");
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
    for (const auto& [typed, taken] : {std::pair{"70000", "65535"}, std::pair{"-5", "0"},
                                       std::pair{"12.5ps", "12"}, std::pair{"abc", "abc"}}) {
        box.set_text(typed);
        box.enter();
        EXPECT_EQ(box.text(), taken) << typed;
    }
}

TEST(Adjust, EnterDoesNothingWhileAnotherTabIsSelected) {
    StartedPanelRig rig;
    rig.acquisition.acqrunning = true;
    rig.acquisition.scopestate = "scopech1f";
    select(rig, "CH1");
    rig.panel.channel[0].psofset.set_text("99999");
    rig.panel.channel[0].psofset.enter();
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "99999");
    EXPECT_EQ(rig.acquisition.scopestate, "scopech1f");
}

TEST(Adjust, TheWheelContinuesFromTheDelayOfTheChannelThatIsCheckedIn) {
    StartedPanelRig rig;
    select(rig, "HPOS");
    rig.panel.channel[0].psofset.set_text("1000");
    rig.panel.channel[0].slenps.set_checked(true);
    EXPECT_EQ(rig.panel.slider1.Value(), 65535 - 1000 - 32768);
    rig.panel.slider1.turn(-1); // 64 ps at 20ns/div
    EXPECT_EQ(rig.panel.channel[0].psofset.text(), "1064");
}

/// Where the wheel stands for a delay of `picoseconds`.
constexpr std::int32_t wheel_at(std::int32_t picoseconds) {
    return 65535 - picoseconds - 32768;
}

/// 1000 ps for CH1 and 20000 ps for CH2, as a settings file brings them.
struct RestoredDelaysRig : StartedPanelRig {
    RestoredDelaysRig() {
        adjust.restore_delay(ch1, "1000");
        adjust.restore_delay(ch2, "20000");
    }

    [[nodiscard]] Texts delays() const {
        return {panel.channel[0].psofset.text(), panel.channel[1].psofset.text()};
    }
};

TEST(DelayWheel, StartsAtTheDelayThatItWillMove) {
    for (const bool second : {false, true}) {
        RestoredDelaysRig rig;
        select(rig, "CH1");
        rig.panel.channel[second ? 1 : 0].slenps.set_checked(true);
        select(rig, "HPOS");
        EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(second ? 20000 : 1000));
        EXPECT_EQ(rig.delays(), (Texts{"1000", "20000"}));
        rig.panel.slider1.turn(-1); // 64 ps at 20ns/div
        EXPECT_EQ(rig.delays(), second ? Texts({"1000", "20064"}) : Texts({"1064", "20000"}));
    }
}

TEST(DelayWheel, OfBothChannelsStartsAtTheFirst) {
    RestoredDelaysRig rig;
    for (ChannelControls& controls : rig.panel.channel) {
        controls.slenps.set_checked(true);
    }
    select(rig, "HPOS");
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(1000));
    rig.panel.slider1.turn(-1);
    EXPECT_EQ(rig.delays(), (Texts{"1064", "1064"}));
}

TEST(DelayWheel, GoesToTheChannelWhoseBoxIsCheckedAndBackToTheOtherOne) {
    RestoredDelaysRig rig;
    select(rig, "HPOS");
    rig.panel.channel[0].slenps.set_checked(true);
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(1000));
    rig.panel.channel[1].slenps.set_checked(true);
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(20000));
    rig.panel.channel[1].slenps.set_checked(false);
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(1000));
}

TEST(DelayWheel, IsNotMovedByABoxWhoseChannelIsNotChecked) {
    RestoredDelaysRig rig;
    rig.panel.channel[0].slenps.set_checked(true);
    rig.panel.channel[0].psofset.focus();
    rig.panel.channel[1].psofset.set_text("50000");
    rig.panel.channel[1].psofset.enter();
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(1000));
    rig.panel.slider1.turn(-1);
    EXPECT_EQ(rig.delays(), (Texts{"1064", "50000"}));
    rig.panel.channel[0].psofset.set_text("300");
    rig.panel.channel[0].psofset.leave();
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(300));
    rig.panel.channel[0].slenps.set_checked(false);
    rig.panel.channel[0].psofset.set_text("400");
    rig.panel.channel[0].psofset.leave();
    EXPECT_EQ(rig.panel.slider1.Value(), wheel_at(300));
}

TEST(Adjust, ANewTimeBaseKeepsTheDelayInItsNewPoints) {
    for (const Channel channel : both_channels) {
        StartedPanelRig rig;
        TextBox& delay = rig.panel.channel[channel].psofset;
        delay.focus();
        delay.set_text("10000");
        delay.enter();
        EXPECT_EQ(rig.channels[channel].delaypts, 32);
        PanelRig::choose(rig.panel.seltimediv, "1ns/div");
        EXPECT_EQ(rig.channels[channel].delaypts, 640);
        EXPECT_EQ(rig.channels[channel].shown_delaypts, 640);
    }
}

TEST(Adjust, TheSelectedDelayTabGoesToChannelOneInPointMode) {
    StartedPanelRig rig;
    rig.channels[0].marker_wheel = 700;
    select(rig, "HPOS");
    PanelRig::choose(rig.panel.seltimediv, "500ns/div");
    EXPECT_EQ(rig.panel.tabstrip2.selected_key(), "CH1");
    EXPECT_EQ(rig.panel.slider1.Value(), 700);
    EXPECT_EQ(rig.panel.slider1.Max(), 1024);
}

TEST(Adjust, ALevelBetweenTwoWheelStepsStaysUntilTheWheelIsTurned) {
    StartedPanelRig rig;
    rig.trigger_state.saved_trigpos[0] = 2050;
    rig.trigger.trigsource_Click();
    select(rig, "TRIG");
    EXPECT_EQ(rig.panel.slider1.Value(), 512); // 2050 / 4 = 512.5, halves to even
    rig.adjust.sliderupdate();
    EXPECT_EQ(rig.trigger_state.trigpos, 2050);
    rig.panel.slider1.turn(1);
    EXPECT_EQ(rig.trigger_state.trigpos, 2052);
    EXPECT_EQ(rig.trigger_state.saved_trigpos[0], 2052);
    rig.panel.slider1.turn(-1);
    EXPECT_EQ(rig.trigger_state.trigpos, 2048);
}

TEST(Adjust, TheWheelIsRefreshedToWhereItsQuantityWasSet) {
    StartedPanelRig rig;
    rig.adjust.move_channel(ch1, 700);
    EXPECT_EQ(rig.channels[0].pos, 162);
    EXPECT_EQ(rig.panel.slider1.Value(), 512);
    rig.adjust.refresh_wheel();
    EXPECT_EQ(rig.panel.slider1.Value(), 700);
    EXPECT_EQ(rig.channels[0].marker_wheel, 700);
}

struct RestoredDelay {
    const char* text;
    const char* box;
    std::int32_t points; ///< of 313 ps stretched by 1.0016
};

TEST(Adjust, ARestoredDelayStandsAsItCouldHaveBeenTyped) {
    const std::vector<RestoredDelay> delays = {{"0", "0", 0},
                                               {"120", "120", 0},
                                               {"10000", "10000", 32},
                                               {"007", "7", 0},
                                               {"", "0", 0},
                                               {"999999999", "65535", 210},
                                               {"120ps", "120", 0},
                                               {"10000.5 ps", "10000", 32},
                                               {"-5", "0", 0},
                                               {"nothing", "0", 0},
                                               {"1234567890", "65535", 210},
                                               {" 500", "500", 2}};
    for (const RestoredDelay& delay : delays) {
        for (const char* target : {"CH1", "HPOS"}) {
            SCOPED_TRACE(delay.text);
            StartedPanelRig rig;
            select(rig, target);
            rig.adjust.restore_delay(ch2, delay.text);
            EXPECT_EQ(rig.panel.channel[1].psofset.text(), delay.box);
            EXPECT_EQ(rig.channels[1].delaypts, delay.points);
            EXPECT_EQ(rig.panel.tabstrip2.selected_key(), target);
            rig.adjust.sliderupdate();
            EXPECT_EQ(rig.panel.channel[1].psofset.text(), delay.box);
        }
    }
}

} // namespace
} // namespace kv408
