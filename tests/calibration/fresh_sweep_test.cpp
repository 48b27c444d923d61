// The compute buttons work on nothing but a triggered sweep of the panel and the record as they are
// now.

#include <algorithm>

#include "calibration/calibration_rig.h"

namespace kv408 {
namespace {

using testing::Test;

const std::string out_of_range = "Sampled data out of range!\nMake sure that trigger signal is "
                                 "present and\n";
const std::string out_of_range_ch1 = out_of_range + "Sampler input CH1 is connected to trigger out";
const std::string out_of_range_quiet = out_of_range + "Sampler inputs are disconnected or 0V";
const std::string stale = "No whole sweep has come since the panel or the calibration was changed, "
                          "or since the instrument fell silent: wait for the trace.";

class FreshSweep : public Test, public CalibrationRig {
protected:
    FreshSweep() {
        panel.mnucalibration.click();
        calibration = {2048, 2048, 2048, 2048, 10000, 10000, 10000, 10000, 10000, 100, 70};
        measure(0, meas::vpp, 1040.0);
        set_up(form.cmdsetforcalgainl);
    }

    void set_up(Button& button) {
        button.click();
        sweep();
        boxes.shown.clear();
        form.calstatus.set_caption("");
    }

    /// Two quiet inputs, both 5 mV too high.
    void set_up_offsets() {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            measure(channel, meas::vpp, 2.0);
            measure(channel, meas::vmean, 5.0);
        }
        set_up(form.cmdsetforcalh);
    }

    void expect_refused(Button& compute, const std::string& text, const std::string& help) {
        const CalibrationRecord before = calibrating.record().edited();
        boxes.shown.clear();
        compute.click();
        ASSERT_EQ(boxes.shown.size(), 1U);
        EXPECT_EQ(boxes.shown[0].text, text);
        EXPECT_EQ(boxes.shown[0].informative, help);
        EXPECT_EQ(boxes.shown[0].icon, MessageIcon::exclamation);
        EXPECT_EQ(calibrating.record().edited(), before);
        EXPECT_EQ(calstatus(), "");
        boxes.shown.clear();
    }

    void expect_computed(Button& compute) {
        boxes.shown.clear();
        compute.click();
        EXPECT_TRUE(boxes.shown.empty());
        EXPECT_NE(calstatus(), "");
        form.calstatus.set_caption("");
    }
};

TEST_F(FreshSweep, IsComputedFrom) {
    expect_computed(form.cmdcalgain);
}

TEST_F(FreshSweep, IsAwaitedAfterTheSetUp) {
    form.cmdsetforcalgainl.click();
    form.calstatus.set_caption("");
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    tick();
    ASSERT_EQ(acquisition.scopestate, "scopech1f");
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    sweep();
    expect_computed(form.cmdcalgain);
}

TEST_F(FreshSweep, IsNeededOfBothChannelsForTheOffsets) {
    set_up_offsets();
    form.cmdsetforcalh.click();
    form.calstatus.set_caption("");
    tick();
    bridge.receive(std::vector<int>(1300, 8));
    tick();
    ASSERT_EQ(acquisition.scopestate, "scopech2f");
    expect_refused(form.cmdcaoffseth, out_of_range_quiet, stale);
    bridge.receive(std::vector<int>(1300, 8));
    tick();
    expect_computed(form.cmdcaoffseth);
}

TEST_F(FreshSweep, IsNoneAfterAWriteSoThatNothingIsCorrectedTwice) {
    form.cmdcalgain.click();
    form.cmdwritecal.click();
    // 10000 * 1000 / 1040
    ASSERT_EQ(calibration[4], 9615);
    form.calstatus.set_caption("");
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    sweep();
    measure(0, meas::vpp, 1000.0);
    expect_computed(form.cmdcalgain);
    EXPECT_EQ(calibrating.record().edited()[4], 9615);
}

TEST_F(FreshSweep, IsNoneAfterDefaults) {
    boxes.answers = {MessageAnswer::yes};
    form.cmdsetalltodefault.click();
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
}

TEST_F(FreshSweep, IsNoneWhileStoppedNeitherBeforeNorAfterAWrite) {
    const std::string stopped = "The sweep is stopped: start it, and wait for the trace.";
    state_machine.cmdstop_Click();
    expect_refused(form.cmdcalgain, out_of_range_ch1, stopped);
    form.cald[4].set_text("9615");
    form.cmdwritecal.click();
    form.calstatus.set_caption("");
    expect_refused(form.cmdcalgain, out_of_range_ch1, stopped);
    state_machine.cmdstartsweep_Click();
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    tick();
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    sweep();
    expect_computed(form.cmdcalgain);
}

TEST_F(FreshSweep, IsNoneAfterAReading) {
    form.cmdreadcald.click();
    form.calstatus.set_caption("");
    expect_refused(form.cmdcalgain, out_of_range_ch1,
                   "The sweep is stopped: start it, and wait for the trace.");
}

TEST_F(FreshSweep, IsNoneWhileTheTriggerIsLost) {
    // The instrument's answer while it waits for a trigger; it is taken when no more has come.
    for (int count = 0; count < 2; ++count) {
        bridge.received.clear();
        bridge.receive({0x1A, 0x0A});
        tick();
    }
    ASSERT_EQ(status(), "Waiting For TRIGGER");
    expect_refused(form.cmdcalgain, out_of_range_ch1, "The instrument waits for a trigger.");
    sweep();
    expect_computed(form.cmdcalgain);
}

TEST_F(FreshSweep, IsNoneOnceTheInstrumentIsSilent) {
    set_up_offsets();
    // The reply to the last request has not come by the next tick.
    bridge.received.clear();
    clock.advance(std::chrono::milliseconds(100));
    tick();
    expect_refused(form.cmdcaoffseth, out_of_range_quiet, stale);
    sweep();
    expect_computed(form.cmdcaoffseth);
}

TEST_F(FreshSweep, IsNoneWhereBytesWereLost) {
    set_up_offsets();
    for (const int bytes : {1, 2, 1298, 1299}) {
        bridge.received.clear();
        bridge.receive(std::vector<int>(static_cast<std::size_t>(bytes), 8));
        // Of a reply that stops growing it is known with the second look.
        tick();
        tick();
        expect_refused(form.cmdcaoffseth, out_of_range_quiet, stale);
        bridge.received.clear();
        sweep();
        expect_computed(form.cmdcaoffseth);
    }
}

TEST_F(FreshSweep, IsNoneDuringALinearityRun) {
    form.cmdcalint.click();
    ASSERT_EQ(acquisition.scopestate, "calibrationint");
    expect_refused(form.cmdcalgain, out_of_range_ch1, "The linearity calibration is under way.");
    EXPECT_EQ(acquisition.scopestate, "calibrationint");
}

TEST_F(FreshSweep, IsNeededForTheTimeScaleToo) {
    set_up(form.cmdsetforcalhscale);
    see_frequency(10.1e6);
    state_machine.cmdstop_Click();
    expect_refused(form.cmdcaltb,
                   "Sampled data out of range!\nMake sure that 10MHz trigger signal is present "
                   "and\nSampler input CH1 is connected to trigger out",
                   "The sweep is stopped: start it, and wait for the trace.");
}

TEST_F(FreshSweep, OfAChannelThatIsOffIsNone) {
    const std::string first = "Scope settings are incorrect!\nPlease press  <";
    panel.channel[0].enable.set_checked(false);
    expect_refused(form.cmdcalgain, first + "Set Cal>-Button first", "");
    // On again, what is there is still old.
    panel.channel[0].enable.set_checked(true);
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    for (std::size_t channel = 0; channel < 2; ++channel) {
        set_up_offsets();
        panel.channel.at(channel).enable.set_checked(false);
        expect_refused(form.cmdcaoffseth, first + "Set for CalH>-Button first", "");
    }
}

TEST_F(FreshSweep, IsNoneAfterAChangeOfTheRangeAndBack) {
    // "0.5V" and "0.2V" are one gain range: the instrument is not set up anew between them.
    const int right = panel.channel[0].vdiv.index();
    panel.channel[0].vdiv.set_index(0);
    ASSERT_EQ(panel.channel[0].vdiv.text(), "0.5V");
    panel.channel[0].vdiv.set_index(right);
    ASSERT_EQ(acquisition.scopestate, "scopech1f");
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    sweep();
    expect_computed(form.cmdcalgain);
}

TEST_F(FreshSweep, IsAWholePassOfPointsToo) {
    const auto answering = bridge.on_frame;
    bridge.on_frame = [this, answering](const FakeBridge::Frame& frame) {
        answering(frame);
        if (frame.at(1) == 26) {
            bridge.receive({8, 8});
        }
    };
    const auto& entries = panel.seltimediv.entries();
    const auto found = std::find(entries.begin(), entries.end(), "1us/div");
    panel.seltimediv.set_index(static_cast<int>(found - entries.begin()));
    ASSERT_TRUE(acquisition.pointmode);
    // A pass that is broken off after some points is none.
    int points = 0;
    messages.on_process = [this, &points](int) {
        if (++points == 100) {
            acquisition.scopestate = "changes";
        }
    };
    for (int count = 0; points == 0 && count < 5; ++count) {
        tick();
    }
    ASSERT_EQ(points, 100);
    acquisition.scopestate = "scope";
    expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    messages.on_process = {};
    tick();
    expect_computed(form.cmdcalgain);
    // Nor is one without an answer, or without a trigger, or what was there before it.
    for (const std::vector<int>& answer : {std::vector<int>{}, std::vector<int>{16, 10}}) {
        bridge.on_frame = [this, answering, answer](const FakeBridge::Frame& frame) {
            answering(frame);
            if (frame.at(1) == 26) {
                bridge.receive(answer);
            }
        };
        acquisition.taken_as_set = {true, true};
        tick();
        acquisition.activity = Activity::running;
        expect_refused(form.cmdcalgain, out_of_range_ch1, stale);
    }
}

TEST_F(FreshSweep, WithoutMeasurementsIsNotMeasured) {
    panel.check1.set_checked(false);
    expect_refused(form.cmdcalgain,
                   "Scope settings are incorrect!\nPlease press  <Set Cal>-Button first", "");
}

TEST_F(FreshSweep, TurnedOverOrShiftedGivesNoOffset) {
    const std::string wrong =
        "Scope settings are incorrect!\nPlease press  <Set for CalH>-Button first";
    for (std::size_t channel = 0; channel < 2; ++channel) {
        set_up_offsets();
        panel.channel.at(channel).invert.set_checked(true);
        sweep();
        expect_refused(form.cmdcaoffseth, wrong, "");
        // What is there was taken inverted.
        panel.channel.at(channel).invert.set_checked(false);
        expect_refused(form.cmdcaoffseth, out_of_range_quiet, stale);
        sweep();
        expect_computed(form.cmdcaoffseth);
    }
    panel.cmdcaloofset.set_checked(true);
    sweep();
    ASSERT_TRUE(panel.cmdcaloofset.checked());
    expect_refused(form.cmdcaoffseth, wrong, "");
    panel.cmdcaloofset.set_checked(false);
    expect_refused(form.cmdcaoffseth, out_of_range_quiet, stale);
}

TEST_F(FreshSweep, TheSetUpTakesTheSoftwareOffsetOffAndSaysSo) {
    panel.cmdcaloofset.set_checked(true);
    channels[0].swoffset = -4;
    channels[1].swoffset = -8;
    set_up(form.cmdsetforcalh);
    EXPECT_FALSE(panel.cmdcaloofset.checked());
    EXPECT_EQ(channels[0].swoffset, 0);
    EXPECT_EQ(channels[1].swoffset, 0);
    EXPECT_EQ(note(), "Software Calibrate Offset was switched off: it would be measured along.");
    set_up(form.cmdsetforcalh);
    EXPECT_EQ(note(), "");
}

} // namespace
} // namespace kv408
