// What breaks a linearity run off, and that it is told.

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using testing::Test;

const std::string told = "Broken off. The next run counts on from here.";

class RunBrokenOff : public Test, public CalibrationRig {
protected:
    RunBrokenOff() {
        form.cmdreadcald.click();
        start_run();
    }

    void start_run() {
        form.cmdcalint.click();
        tick_with(5);
        boxes.shown.clear();
        ASSERT_EQ(acquisition.scopestate, "calibrationint");
        ASSERT_TRUE(note().starts_with("Time left")) << note();
    }

    void tick_with(int byte) {
        clock.advance(milliseconds(100));
        bridge.receive({byte});
        tick();
    }

    void expect_told() {
        EXPECT_EQ(note(), told);
        EXPECT_EQ(calstatus(), "");
    }

    /// The one question that was asked.
    void expect_asked() {
        ASSERT_EQ(boxes.shown.size(), 1U);
        EXPECT_EQ(boxes.shown[0].text, "Break the linearity calibration off?");
        EXPECT_EQ(boxes.shown[0].title, "Calibrate Linearity");
        EXPECT_EQ(boxes.shown[0].buttons, MessageButtons::yes_no);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::question);
        boxes.shown.clear();
    }
};

TEST_F(RunBrokenOff, ByStopAndByStartOfTheMainWindow) {
    state_machine.cmdstop_Click();
    expect_told();
    EXPECT_EQ(acquisition.scopestate, "stoped");
    start_run();
    state_machine.cmdstartsweep_Click();
    expect_told();
    EXPECT_EQ(acquisition.scopestate, "startscope");
    // Without a run there is nothing to tell.
    form.calnote.set_caption("-");
    state_machine.cmdstop_Click();
    EXPECT_EQ(note(), "-");
}

TEST_F(RunBrokenOff, BeforeItsFirstPoint) {
    for (int point = 1; point < 8000; ++point) {
        tick_with(0);
    }
    ASSERT_EQ(calstatus(), "Calibration Completed");
    form.cmdcalint.click();
    form.cmdcalstop.click();
    EXPECT_EQ(note(), "Broken off before the first point.");
    // A tick without a byte begins to count, but there is still no point.
    form.cmdcalint.click();
    tick();
    form.cmdcalstop.click();
    EXPECT_EQ(note(), "Broken off before the first point.");
}

TEST_F(RunBrokenOff, AResumedRunCountsOnAlsoBeforeItsFirstTick) {
    form.cmdcalstop.click();
    form.cmdcalint.click();
    EXPECT_EQ(note(), "");
    form.cmdcalstop.click();
    EXPECT_EQ(note(), told);
}

TEST_F(RunBrokenOff, ByReadingOnlyAfterAQuestion) {
    boxes.answers = {MessageAnswer::no};
    bridge.calls.clear();
    form.cmdreadcald.click();
    expect_asked();
    EXPECT_TRUE(bridge.frames().empty());
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
    boxes.answers = {MessageAnswer::yes};
    form.cmdreadcald.click();
    expect_asked();
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_EQ(calstatus(), "Read complete");
}

TEST_F(RunBrokenOff, ByWritingOnlyAfterAQuestion) {
    boxes.answers = {MessageAnswer::no};
    bridge.calls.clear();
    form.cmdwritecal.click();
    expect_asked();
    EXPECT_TRUE(bridge.frames().empty());
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
    boxes.answers = {MessageAnswer::yes};
    form.cmdwritecal.click();
    expect_asked();
    EXPECT_EQ(flash_frames(34).size(), 12U);
    EXPECT_EQ(acquisition.scopestate, "stoped");
    EXPECT_EQ(calstatus(), "Write complete");
}

TEST_F(RunBrokenOff, BySettingUpWhichSaysSo) {
    boxes.answers = {MessageAnswer::cancel};
    form.cmdsetforcalgainl.click();
    ASSERT_EQ(boxes.shown.size(), 1U);
    EXPECT_EQ(boxes.shown[0].informative,
              "The linearity calibration is under way. OK breaks it off.");
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
    form.cmdsetforcalgainl.click();
    EXPECT_EQ(note(), told);
    EXPECT_TRUE(calstatus().starts_with("Ready for CH1 gain calibration")) << calstatus();
    EXPECT_EQ(acquisition.scopestate, "startscope");
    form.cmdsetforcalgainl.click();
    EXPECT_EQ(boxes.shown.back().informative, "");
}

TEST_F(RunBrokenOff, ByItsOwnButtonItGoesOn) {
    const std::size_t before = bridge.frames().size();
    form.cmdcalint.click();
    EXPECT_EQ(bridge.frames().size(), before + 1);
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
    EXPECT_EQ(note(), "");
    tick_with(0);
    EXPECT_EQ(calstatus(), "Calibrating 2501 of 10500 points");
}

TEST_F(RunBrokenOff, ByNoClosingAndOpeningOfTheForm) {
    panel.mnucalibration.click();
    form.window.close();
    const std::size_t before = bridge.frames().size();
    tick_with(0);
    panel.mnucalibration.click();
    EXPECT_EQ(bridge.frames().size(), before);
    EXPECT_EQ(calstatus(), "Calibrating 2501 of 10500 points");
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
}

TEST_F(RunBrokenOff, TheTimeLeftOfAResumedRunFollowsItsOwnPace) {
    for (int point = 1; point < 1000; ++point) {
        tick_with(0);
    }
    form.cmdcalstop.click();
    clock.advance(std::chrono::hours(1));
    form.cmdcalint.click();
    for (int point = 0; point < 1000; ++point) {
        clock.advance(milliseconds(100));
        tick_with(0);
    }
    // 6000 points of 200 ms.
    EXPECT_EQ(note(), "Time left: about 20 minutes");
}

TEST_F(RunBrokenOff, AQueueThatCannotBeAskedIsSilence) {
    bridge.status["SI_CheckRXQueue"] = 5;
    tick_with(7);
    EXPECT_EQ(calstatus(), "Calibrating 2500 of 10500 points");
    EXPECT_EQ(bridge.received.size(), 1U);
    bridge.status.clear();
    tick();
    EXPECT_EQ(calstatus(), "Calibrating 2501 of 10500 points");
}

} // namespace
} // namespace kv408
