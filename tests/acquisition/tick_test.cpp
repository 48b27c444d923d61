#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"
#include "panel/set_up_change.h"

namespace kv408 {
namespace {

/// A stopped program: its ticks neither send nor change the state.
struct StoppedRig : AcquisitionRig {
    StoppedRig() {
        start();
        state_machine.cmdstop_Click();
    }
};

TEST(HoldOff, CountsDownByTheIntervalAndEndsAtZero) {
    StoppedRig rig;
    rig.acquisition.holdoff = true;
    rig.acquisition.holdoff_time = 300;
    for (const std::int32_t left : {200, 100}) {
        rig.tick();
        EXPECT_EQ(rig.acquisition.holdoff_time, left);
        EXPECT_TRUE(rig.acquisition.holdoff);
    }
    rig.tick();
    EXPECT_EQ(rig.acquisition.holdoff_time, 0);
    EXPECT_FALSE(rig.acquisition.holdoff);
}

TEST(HoldOff, ATimeThatIsNoMultipleOfTheIntervalEndsAtZeroToo) {
    StoppedRig rig;
    rig.acquisition.holdoff = true;
    rig.acquisition.holdoff_time = 150;
    rig.tick();
    EXPECT_EQ(rig.acquisition.holdoff_time, 50);
    EXPECT_TRUE(rig.acquisition.holdoff);
    rig.tick();
    EXPECT_EQ(rig.acquisition.holdoff_time, 0);
    EXPECT_FALSE(rig.acquisition.holdoff);
}

TEST(HoldOff, WithoutItsFlagTheTimeStands) {
    StoppedRig rig;
    rig.acquisition.holdoff_time = 1000;
    rig.tick();
    EXPECT_EQ(rig.acquisition.holdoff_time, 1000);
}

TEST(HoldOff, AFlagWithoutTimeIsCleared) {
    for (const std::int32_t time : {0, -1, -1000}) {
        StoppedRig rig;
        rig.acquisition.holdoff = true;
        rig.acquisition.holdoff_time = time;
        rig.tick();
        EXPECT_FALSE(rig.acquisition.holdoff) << time;
        EXPECT_EQ(rig.acquisition.holdoff_time, 0) << time;
    }
}

TEST(HoldOff, ThatEndsUnderAMessageBoxTakesItsLineOffAfterwards) {
    StoppedRig rig;
    rig.acquisition.holdoff = true;
    rig.acquisition.holdoff_time = 100;
    rig.state_machine.Timer1_Timer(true);
    EXPECT_FALSE(rig.acquisition.holdoff);
    EXPECT_EQ(rig.screen.calls, std::vector<std::string>{});
    rig.tick();
    EXPECT_EQ(rig.screen.calls, std::vector<std::string>{"draw 255"});
    rig.tick();
    EXPECT_EQ(rig.screen.calls, std::vector<std::string>{"draw 255"});
}

TEST(DateLabel, ShowsTimeAndDateWithTwoDigitsEach) {
    const std::pair<LocalTime, const char*> rows[] = {
        {{.year = 2026, .month = 11, .day = 21, .hour = 14, .minute = 5, .second = 9},
         "14:05:09, 21.11.26"},
        {{.year = 2005, .month = 1, .day = 2, .hour = 0, .minute = 0, .second = 0},
         "00:00:00, 02.01.05"},
        {{.year = 1999, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 59},
         "23:59:59, 31.12.99"},
    };
    for (const auto& [time, text] : rows) {
        for (const bool exchange_under_way : {false, true}) {
            StoppedRig rig;
            rig.clock.set_local_time(time);
            rig.state_machine.Timer1_Timer(exchange_under_way);
            EXPECT_EQ(rig.panel.lbldate.caption(), text);
        }
    }
}

struct RedrawRow {
    bool first_on;
    bool second_on;
    bool first_ready;
    bool second_ready;
    bool redrawn;
};

constexpr RedrawRow redraw_rows[] = {
    {false, false, false, false, false}, {false, false, false, true, false},
    {false, false, true, false, false},  {false, false, true, true, false},
    {false, true, false, false, false},  {false, true, false, true, true},
    {false, true, true, false, false},   {false, true, true, true, true},
    {true, false, false, false, false},  {true, false, false, true, false},
    {true, false, true, false, true},    {true, false, true, true, true},
    {true, true, false, false, false},   {true, true, false, true, false},
    {true, true, true, false, false},    {true, true, true, true, true},
};

TEST(Redraw, NeedsNewDataOfEveryChannelThatIsOn) {
    for (const RedrawRow& row : redraw_rows) {
        StoppedRig rig;
        rig.enable(row.first_on, row.second_on);
        rig.acquisition.ready = {row.first_ready, row.second_ready};
        rig.tick();
        EXPECT_EQ(rig.screen.calls, row.redrawn ? Texts{"draw 255"} : Texts{})
            << row.first_on << row.second_on << row.first_ready << row.second_ready;
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{row.first_ready, row.second_ready}));
    }
}

TEST(Redraw, APendingRefreshTakesTheUploadedDelaysAndRemapsFirst) {
    StoppedRig rig;
    rig.channels[0].uploaded_delaypts = 12;
    rig.channels[0].delaypts = 77; // turned on since the upload
    rig.channels[1].uploaded_delaypts = -3;
    rig.channels[1].delaypts = -3;
    rig.channels[1].shown_delaypts = 40;
    rig.acquisition.pending_refresh = true;
    rig.tick();
    EXPECT_TRUE(rig.acquisition.pending_refresh) << "no new data yet";
    EXPECT_EQ(rig.channels[0].shown_delaypts, 0);
    rig.acquisition.ready = {true, true};
    rig.tick();
    EXPECT_FALSE(rig.acquisition.pending_refresh);
    EXPECT_EQ(rig.channels[0].shown_delaypts, 12);
    EXPECT_EQ(rig.channels[1].shown_delaypts, -3);
    EXPECT_TRUE(rig.screen.shows_both_traces_anew());
    rig.forget();
    rig.tick();
    EXPECT_EQ(rig.screen.calls, Texts{"draw 255"}) << "the history stays";
}

TEST(Redraw, ADelayIsShownWithTheFirstDataTakenWithIt) {
    AcquisitionRig rig;
    rig.start();
    rig.tick();
    rig.tick();
    for (int block = 0; block < 2; ++block) {
        rig.bridge.receive(std::vector<int>(1300, 8));
        rig.tick();
    }
    EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{true, true}));
    rig.channels[0].delaypts = 12;
    rig.acquisition.scopestate = "startscope";
    rig.tick();
    EXPECT_TRUE(rig.acquisition.pending_refresh);
    EXPECT_EQ(rig.channels[0].shown_delaypts, 0) << "the data shown is still the old";
    rig.bridge.receive(std::vector<int>(1300, 8));
    rig.tick();
    EXPECT_EQ(rig.channels[0].shown_delaypts, 0) << "one channel of two";
    rig.bridge.receive(std::vector<int>(1300, 8));
    rig.tick();
    EXPECT_EQ(rig.channels[0].shown_delaypts, 12);
    EXPECT_FALSE(rig.acquisition.pending_refresh);
}

TEST(Redraw, WhatCouldNotBeDrawnIsDrawnOnTheNextTick) {
    StoppedRig rig;
    rig.enable(false, false);
    rig.screen.owed = true;
    rig.tick();
    EXPECT_EQ(rig.screen.calls, Texts{"draw 255"});
    rig.screen.owed = false;
    rig.tick();
    EXPECT_EQ(rig.screen.calls, Texts{"draw 255"});
}

struct OwedRow {
    bool on;   ///< the channel is
    bool held; ///< data of the channel had come before the change
    Activity activity;
    bool untriggered; ///< before the set-up
    int ticks;        ///< that pass until it is drawn
};

TEST(Redraw, WhatCouldNotBeDrawnWaitsASecondForDataThatMayCome) {
    const OwedRow rows[] = {
        {true, true, Activity::running, false, 10},
        {true, false, Activity::running, false, 1},
        {false, true, Activity::running, false, 1},
        {true, true, Activity::waiting_for_trigger, false, 1},
        {true, true, Activity::set_up, false, 10},
        {true, true, Activity::set_up, true, 1},
    };
    for (const OwedRow& row : rows) {
        for (const bool first : {true, false}) {
            AcquisitionRig rig;
            rig.start();
            rig.acquisition.scopestate = "Idle"; // does nothing
            rig.acquisition.activity = row.activity;
            rig.acquisition.untriggered = row.untriggered;
            rig.enable(row.on && first, row.on && !first);
            rig.acquisition.held = {row.held && first, row.held && !first};
            rig.screen.owed = true;
            int ticks = 0;
            while (rig.screen.calls.empty() && ticks < 20) {
                rig.tick();
                ++ticks;
            }
            EXPECT_EQ(ticks, row.ticks)
                << static_cast<int>(row.activity) << row.on << row.held << first;
        }
    }
}

TEST(Redraw, TheSecondBeginsAnewWithEachDrawing) {
    AcquisitionRig rig;
    rig.start();
    rig.acquisition.scopestate = "Idle";
    rig.acquisition.held = {true, true};
    for (int time = 0; time < 3; ++time) {
        rig.screen.owed = true;
        for (int tick = 0; tick < 9; ++tick) {
            rig.tick();
        }
        rig.screen.owed = false;
        rig.tick();
    }
    EXPECT_EQ(rig.screen.calls, Texts{});
}

TEST(Stop, BringsBackTheNewDataFlagsThatAChangeHasCleared) {
    for (const Channel channel : both_channels) {
        AcquisitionRig rig;
        rig.start();
        rig.acquisition.ready.at(channel) = true;
        rig.acquisition.await_new_data(ch1);
        rig.acquisition.await_new_data(ch2);
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{false, false}));
        rig.acquisition.await_new_data(channel); // once more, before any data
        rig.state_machine.cmdstop_Click();
        EXPECT_EQ(rig.acquisition.ready, (std::array<bool, 2>{channel == 0, channel == 1}));
        EXPECT_TRUE(rig.screen.calls.empty());
    }
}

// CH1's data came with the new delay of 12 points, CH2's are still those before.
TEST(Stop, TakesOnlyDataThatHaveComeAsTakenWithTheNewDelay) {
    AcquisitionRig rig;
    rig.start();
    for (ChannelState& state : rig.channels) {
        state.delaypts = 12;
        state.uploaded_delaypts = 12;
    }
    rig.acquisition.held = {true, true};
    rig.acquisition.ready = {true, false};
    rig.acquisition.pending_refresh = true;
    rig.state_machine.cmdstop_Click();
    EXPECT_EQ(rig.channels[0].shown_delaypts, 12);
    EXPECT_EQ(rig.channels[1].shown_delaypts, 0);
    EXPECT_FALSE(rig.acquisition.pending_refresh);
    EXPECT_EQ(rig.screen.calls, Texts{"refresh 1 0"});
    rig.tick();
    EXPECT_EQ(rig.channels[1].shown_delaypts, 0);
}

TEST(Redraw, AChangeWhileStoppedIsShownAtOnceWithItsMarks) {
    for (const char* const state : {"Idle", "idle", "startscope", "scope", "scopech1f", "scopech2f",
                                    "calibrationint", "changes", "changes1", "stoped"}) {
        AcquisitionRig rig;
        rig.acquisition.scopestate = state;
        int marked_before = 0;
        rig.screen.on_draw = [&] { marked_before = rig.measuring.shown; };
        show_change(rig.around);
        const bool stopped = std::string(state) == "stoped";
        EXPECT_EQ(rig.screen.calls, stopped ? Texts{"draw 255"} : Texts{}) << state;
        EXPECT_EQ(marked_before, stopped ? 1 : 0) << state;
    }
}

TEST(RestrictedTick, ActsOnNoStateAndRedrawsNothing) {
    for (const char* state : {"startscope", "scope", "scopech1f", "scopech2f", "changes",
                              "changes1", "stoped", "idle", "calibrationint"}) {
        AcquisitionRig rig;
        rig.start();
        rig.panel.textstatus.set_text("before");
        rig.acquisition.scopestate = state;
        rig.acquisition.ready = {true, true};
        rig.acquisition.holdoff = true;
        rig.acquisition.holdoff_time = 1000;
        rig.bridge.receive(std::vector<int>(1300, 8));
        rig.state_machine.Timer1_Timer(true);
        EXPECT_EQ(rig.acquisition.scopestate, state);
        EXPECT_EQ(rig.status(), "before") << state;
        EXPECT_TRUE(rig.bridge.calls.empty()) << state;
        EXPECT_TRUE(rig.screen.calls.empty()) << state;
        EXPECT_EQ(rig.acquisition.holdoff_time, 900) << state;
    }
}

TEST(CalibrationStep, IsRunByEachTickInItsStateAndInNoOther) {
    AcquisitionRig rig;
    rig.start();
    int steps = 0;
    rig.state_machine.on_calibration_step([&] { ++steps; });
    for (const char* const state : {"changes", "stoped", "idle", "startscope", "Calibrationint"}) {
        rig.acquisition.scopestate = state;
        rig.tick();
    }
    EXPECT_EQ(steps, 0);
    rig.acquisition.scopestate = "calibrationint";
    rig.tick();
    rig.tick();
    EXPECT_EQ(steps, 2);
    EXPECT_EQ(rig.acquisition.scopestate, "calibrationint");
    rig.state_machine.Timer1_Timer(true);
    EXPECT_EQ(steps, 2);
}

TEST(RestrictedTick, InsideAPassStartsNoSecondExchange) {
    AcquisitionRig rig;
    rig.start();
    rig.acquisition.pointmode = true;
    rig.acquisition.scopestate = "scope";
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive({8, 0}); };
    rig.messages.on_process = [&](int) { rig.state_machine.Timer1_Timer(true); };
    rig.tick();
    EXPECT_EQ(rig.bridge.frames().size(), 1280U);
    EXPECT_EQ(rig.messages.processed, 640);
}

TEST(StatusBox, IsLeftAloneByTicksThatChangeNothing) {
    StoppedRig rig;
    int told = 0;
    const Listening listening = rig.panel.textstatus.on_shown([&told] { ++told; });
    rig.tick();
    EXPECT_EQ(rig.panel.textstatus.text(), "Stopped");
    const int told_at_first = told;
    EXPECT_GT(told_at_first, 0);
    rig.tick();
    rig.tick();
    EXPECT_EQ(told, told_at_first);
}

} // namespace
} // namespace kv408
