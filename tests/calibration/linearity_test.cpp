#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::Test;

class Linearity : public Test, public CalibrationRig {
protected:
    Linearity() {
        state_machine.cmdstop_Click();
        forget();
    }

    /// One tick, 100 ms after the one before, with the byte that has come until then.
    void tick_with(int byte) {
        bridge.receive({byte});
        clock.advance(milliseconds(100));
        tick();
    }

    /// A tick without a byte.
    void silent_tick() {
        clock.advance(milliseconds(100));
        tick();
    }

    void start_run() {
        form.cmdcalint.click();
        ASSERT_EQ(acquisition.scopestate, "calibrationint");
        forget();
    }

    [[nodiscard]] std::string counts() const {
        return form.calerorcnt.caption() + " " + form.calerormax.caption();
    }
};

TEST_F(Linearity, StartsAfterAQuestion) {
    form.cmdcalint.click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].text,
              "Linearity Calibration will take minimum 30 minutes!\n\nStart now?");
    EXPECT_EQ(boxes.shown[0].title, "Calibrate Linearity");
    EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::ok_cancel);
    EXPECT_EQ(boxes.shown[0].icon, MessageIcon::question);
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
}

TEST_F(Linearity, CancelChangesNothing) {
    state_machine.cmdstartsweep_Click();
    boxes.answers = {MessageAnswer::cancel};
    form.cmdcalint.click();
    EXPECT_EQ(acquisition.scopestate, "startscope");
    EXPECT_TRUE(bridge.frames().empty());
}

TEST_F(Linearity, TheSweepIsStoppedTheLinkFallsQuietAndTheCommandGoesOutOnce) {
    state_machine.cmdstartsweep_Click();
    tick();
    forget();
    int polls = 0;
    bridge.on_check = [&](std::uint32_t& waiting) { waiting = ++polls == 1 ? 700 : 1300; };
    const CommandArguments left = link.cmdargs();
    form.cmdcalint.click();
    EXPECT_FALSE(acquisition.acqrunning);
    EXPECT_EQ(polls, 3);
    ASSERT_EQ(bridge.frames().size(), 1U);
    EXPECT_EQ(bridge.frames()[0][1], 29);
    for (std::size_t index = 1; index <= 5; ++index) {
        EXPECT_EQ(bridge.frames()[0].at(index + 1), left.at(index));
    }
    const auto timeline = bridge.timeline();
    EXPECT_TRUE(std::any_of(timeline.begin(), timeline.end(), [](const std::string& call) {
        return call.starts_with("SI_SetTimeouts 100 100 ");
    }));
    // What is read or written next waits as long as usual.
    EXPECT_TRUE(timeline.back().starts_with("SI_SetTimeouts 1000 1000 ")) << timeline.back();
}

TEST_F(Linearity, WithoutAnAcknowledgeThereIsNoRun) {
    bridge.on_frame = {};
    form.cmdcalint.click();
    EXPECT_EQ(boxes.texts(),
              (Texts{"Linearity Calibration will take minimum 30 minutes!\n\nStart now?",
                     " CALDELPSComm timed out", "Error Sending Data."}));
    EXPECT_EQ(bridge.frames().size(), 3U);
    EXPECT_EQ(acquisition.scopestate, "stoped");
}

TEST_F(Linearity, TheFirstPointIsNumber2500) {
    start_run();
    tick_with(0);
    EXPECT_EQ(calstatus(), "Calibrating 2500 of 10500 points");
    EXPECT_EQ(status(), "Calibrating 2500 of 10500 points");
    EXPECT_EQ(panel.textstatus.back_colour(), rgb(192, 255, 255));
    tick_with(0);
    EXPECT_EQ(calstatus(), "Calibrating 2501 of 10500 points");
}

TEST_F(Linearity, EachTickTakesOneByte) {
    start_run();
    bridge.receive({0, 0, 0});
    silent_tick();
    EXPECT_EQ(calibrating.linearity().point(), 2501);
    EXPECT_EQ(bridge.received.size(), 2U);
    EXPECT_EQ(bridge.count("SI_Read"), 1);
}

TEST_F(Linearity, ErrorsAreFilteredCountedAndTheLargestShown) {
    start_run();
    const std::vector<std::pair<int, std::string>> steps = {
        {0, "0 0"}, {1, "0 0"},     {255, "0 0"},   {2, "1 2"},     {254, "2 2"},   {3, "3 3"},
        {2, "4 3"}, {129, "5 127"}, {128, "6 128"}, {130, "7 128"}, {127, "8 128"}, {0, "8 128"}};
    for (const auto& [byte, shown] : steps) {
        tick_with(byte);
        EXPECT_EQ(counts(), shown) << byte;
    }
}

TEST_F(Linearity, EveryByteHasItsSize) {
    for (int byte = 0; byte < 256; ++byte) {
        const int size = byte <= 128 ? byte : 256 - byte;
        EXPECT_EQ(linearity_error(static_cast<Byte>(byte)), size == 1 ? 0 : size) << byte;
    }
}

TEST_F(Linearity, EndsWithThe8000thByte) {
    start_run();
    for (int point = 0; point < 7999; ++point) {
        tick_with(2);
    }
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
    EXPECT_EQ(calstatus(), "Calibrating 10498 of 10500 points");
    tick_with(3);
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_EQ(calstatus(), "Calibration Completed");
    EXPECT_EQ(status(), "Calibration Completed");
    EXPECT_EQ(panel.textstatus.back_colour(), rgb(192, 255, 255));
    EXPECT_EQ(messages.repainted, Texts{"textstatus"});
    EXPECT_EQ(counts(), "8000 3");
    tick_with(9);
    EXPECT_EQ(status(), "Stopped");
    EXPECT_EQ(counts(), "8000 3");
    EXPECT_EQ(calstatus(), "Calibration Completed");
}

TEST_F(Linearity, ATickWithoutAByteIsSkipped) {
    start_run();
    silent_tick();
    EXPECT_EQ(calibrating.linearity().point(), 2500);
    EXPECT_EQ(calstatus(), "");
    for (int point = 0; point < 8000; ++point) {
        silent_tick();
        tick_with(0);
        if (point < 7999) {
            silent_tick();
            ASSERT_EQ(acquisition.scopestate, "calibrationint") << point;
        }
    }
    EXPECT_EQ(acquisition.scopestate, "stoped");
}

TEST_F(Linearity, AByteThatCannotBeReadIsNone) {
    start_run();
    bridge.status["SI_Read"] = 5;
    tick_with(7);
    EXPECT_EQ(calibrating.linearity().point(), 2500);
    EXPECT_EQ(form.calerorcnt.caption(), "0");
}

TEST_F(Linearity, ARunBrokenOffIsResumed) {
    start_run();
    for (int point = 0; point < 10; ++point) {
        tick_with(5);
    }
    form.cmdcalstop.click();
    EXPECT_EQ(acquisition.scopestate, "stoped");
    tick();
    EXPECT_EQ(status(), "Stopped");
    EXPECT_EQ(note(), "Broken off. The next run counts on from here.");
    EXPECT_EQ(form.progressbar1.value(), 10);
    EXPECT_EQ(form.progressbar1.steps(), 8000);
    start_run();
    tick_with(0);
    EXPECT_EQ(calstatus(), "Calibrating 2510 of 10500 points");
    EXPECT_EQ(counts(), "10 5");
    for (int point = 0; point < 7989; ++point) {
        ASSERT_EQ(acquisition.scopestate, "calibrationint");
        tick_with(0);
    }
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_EQ(form.progressbar1.value(), 7990);
    EXPECT_EQ(form.progressbar1.steps(), 7990);
    // The run after it counts from the start.
    start_run();
    tick_with(0);
    EXPECT_EQ(calstatus(), "Calibrating 2500 of 10500 points");
    EXPECT_EQ(counts(), "0 0");
}

TEST_F(Linearity, StopWithoutARunOnlyStops) {
    state_machine.cmdstartsweep_Click();
    form.calnote.set_caption("-");
    form.cmdcalstop.click();
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_FALSE(acquisition.acqrunning);
    EXPECT_EQ(note(), "-");
}

TEST_F(Linearity, TheTimeLeftFollowsTheMeasuredPace) {
    start_run();
    // A point every 200 ms: 8000 points take 1600 s.
    for (int point = 0; point < 1000; ++point) {
        silent_tick();
        tick_with(0);
    }
    EXPECT_EQ(note(), "Time left: about 24 minutes"); // 1400 s
    for (int point = 1000; point < 7800; ++point) {
        silent_tick();
        tick_with(0);
    }
    EXPECT_EQ(note(), "Time left: less than a minute"); // 40 s
}

TEST_F(Linearity, TheTimeLeftReadsWell) {
    EXPECT_EQ(minutes_in_words(minutes(30)), "about 30 minutes");
    EXPECT_EQ(minutes_in_words(minutes(29) + seconds(1)), "about 30 minutes");
    EXPECT_EQ(minutes_in_words(minutes(1)), "about 1 minute");
    EXPECT_EQ(minutes_in_words(minutes(1) - milliseconds(1)), "less than a minute");
}

TEST_F(Linearity, ALongSilenceIsTold) {
    start_run();
    tick_with(0);
    for (int count = 0; count < 49; ++count) {
        silent_tick();
    }
    EXPECT_NE(note().find("Time left"), std::string::npos);
    silent_tick();
    EXPECT_EQ(note(), "No point has come for 5s. Stop breaks the run off.");
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
}

TEST_F(Linearity, NothingHappensWhileABoxIsOpen) {
    start_run();
    bridge.receive({5});
    state_machine.Timer1_Timer(true);
    EXPECT_EQ(calibrating.linearity().point(), 2500);
}

} // namespace
} // namespace kv408
