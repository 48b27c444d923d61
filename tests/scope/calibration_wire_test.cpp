// The calibration form on the wire, and its long run, on the simulated instrument.

#include "scope/calibrated_program.h"

namespace kv408 {
namespace {

using Frames = std::vector<std::vector<int>>;

/// The frames of `program` from the `first` on that read or write flash words.
Frames flash_frames(const Program& program, std::size_t first) {
    Frames result;
    for (const std::vector<int>& frame : frames_of(program, first)) {
        if (frame[0] == 33 || frame[0] == 34) {
            result.push_back(frame);
        }
    }
    return result;
}

TEST(CalibrationWire, OpeningReadsTheRecordAndSweepsOn) {
    Calibrated program;
    program.simulation.set_factory_state();
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    const std::size_t before = program.log.frames.size();
    program.press_menu();
    Frames expected;
    for (int index = 0; index < 11; ++index) {
        expected.push_back({33, 0xA4, index, 0, 0, 0});
    }
    expected.push_back({33, 0xA4, 0x3D, 0, 0, 0});
    expected.push_back({33, 0xA4, 0x3E, 0, 0, 0});
    EXPECT_EQ(frames_of(program, before), expected);
    const CalibrationRecord record = {2033,  2081, 2058, 2059, 10100, 9900,
                                      10050, 9950, 9950, 100,  70};
    EXPECT_EQ(program.scope.parts().calibration, record);
    EXPECT_EQ(program.form().cald61.text(), "408");
    EXPECT_EQ(program.form().cald62.text(), "16");
    program.ticks(4);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(CalibrationWire, WritingSendsEveryWordHighByteFirstAndTheMarker) {
    Calibrated program;
    program.simulation.set_factory_state();
    program.open();
    program.scope.act([&] { program.form().cald[9].set_text("-2"); });
    const std::size_t before = program.log.frames.size();
    program.press(program.form().cmdwritecal);
    Frames expected;
    const std::vector<int> words = {2033,  2081, 2058, 2059,   10100, 9900,
                                    10050, 9950, 9950, 0xFFFE, 70};
    for (int index = 0; index < 11; ++index) {
        const int word = words.at(static_cast<std::size_t>(index));
        expected.push_back({34, 0xA4, index, word / 256, word % 256, 0});
    }
    expected.push_back({34, 0xA4, 0x3F, 0, 55, 0});
    for (int index = 0; index < 11; ++index) {
        expected.push_back({33, 0xA4, index, 0, 0, 0});
    }
    EXPECT_EQ(flash_frames(program, before), expected);
    EXPECT_EQ(program.simulation.flash().read(0xA409), 0xFFFE);
    EXPECT_EQ(program.simulation.flash().read(0xA43F), 55);
    program.ticks(4);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(CalibrationWire, WritingInTheMiddleOfAPointPassEndsThePass) {
    Calibrated program;
    program.open();
    program.choose(program.scope.panel().seltimediv, "1us/div");
    program.ticks(3);
    const int written_at = program.messages.processed + 40;
    program.messages.on_process = [&](int processed) {
        if (processed == written_at) {
            program.press(program.form().cmdwritecal);
            EXPECT_EQ(program.state(), "changes");
        }
    };
    program.ticks(1);
    program.messages.on_process = {};
    EXPECT_EQ(program.form().calstatus.caption(), "Write complete");
    EXPECT_EQ(program.state(), "changes");
    program.ticks(3);
    EXPECT_EQ(program.status(), "Running");
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(CalibrationWire, TheOldRecordComesBackFromItsFile) {
    Calibrated program;
    program.simulation.set_factory_state();
    program.open();
    program.files.written.clear();
    program.boxes.answers = {MessageAnswer::yes};
    program.press(program.form().cmdsetalltodefault);
    EXPECT_EQ(program.simulation.flash().record(4), 10100);
    program.press(program.form().cmdwritecal);
    EXPECT_EQ(program.simulation.flash().record(4), 10000);
    ASSERT_FALSE(program.files.written.empty());
    ASSERT_NE(program.files.written[0].find("/calibration-"), std::string::npos);
    program.choosers.answers = {program.files.written[0]};
    program.press(program.form().cmdrestorecal);
    program.press(program.form().cmdwritecal);
    EXPECT_EQ(program.simulation.flash().record(4), 10100);
    EXPECT_EQ(program.simulation.flash().record(0), 2033);
}

TEST(CalibrationWire, ASilentInstrumentLeavesTheRecordAsItWas) {
    Calibrated program;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    program.simulation.bench().faults.lose_every = 1;
    program.press_menu();
    EXPECT_EQ(program.scope.parts().calibration, default_calibration);
    EXPECT_NE(program.form().calnote.caption().find("\nWord 1 of 13 did not come"),
              std::string::npos);
    EXPECT_EQ(program.form().cald[0].text(), "");
    EXPECT_FALSE(program.form().cmdwritecal.enabled());
    // It answers again when the form is opened next.
    program.simulation.bench().faults.lose_every = 0;
    program.press_menu();
    EXPECT_EQ(program.form().calstatus.caption(), "Read complete");
    EXPECT_NE(program.form().cald[0].text(), "");
}

TEST(CalibrationWire, AGainIsNotCorrectedTwiceForTheSameSweep) {
    Calibrated program;
    program.simulation.set_factory_state();
    program.open();
    CalibrationForm& form = program.form();
    program.calibrate(TestConnection::sine_1v_ch1, form.cmdsetforcalgainl, form.cmdcalgain);
    const int written = program.simulation.flash().record(4);
    program.boxes.shown.clear();
    program.press(form.cmdcalgain);
    ASSERT_EQ(program.boxes.shown.size(), 1U);
    EXPECT_TRUE(program.boxes.shown[0].text.starts_with("Sampled data out of range!"));
    EXPECT_EQ(form.cald[4].text(), std::to_string(written));
    program.ticks(6);
    program.press(form.cmdcalgain);
    EXPECT_EQ(program.boxes.shown.size(), 1U);
    // What is left is the noise.
    EXPECT_NEAR(std::stoi(form.cald[4].text()), written, 30);
}

TEST(CalibrationWire, WithoutATriggerNothingIsComputed) {
    Calibrated program;
    program.open();
    CalibrationForm& form = program.form();
    connect(program.simulation.bench(), TestConnection::sine_1v_ch1);
    program.press(form.cmdsetforcalgainl);
    program.ticks(10);
    program.simulation.bench().faults.no_trigger = true;
    program.ticks(20);
    ASSERT_EQ(program.status(), "Waiting For TRIGGER");
    const std::string before = form.cald[4].text();
    program.press(form.cmdcalgain);
    EXPECT_EQ(program.boxes.shown.back().informative, "The instrument waits for a trigger.");
    EXPECT_EQ(form.cald[4].text(), before);
}

/// The run on an instrument that sends a point every 225 ms.
class LinearityOnTheInstrument : public testing::Test {
protected:
    LinearityOnTheInstrument() {
        program_.open();
        connect(program_.simulation.bench(), TestConnection::sine_1v_ch1);
        program_.press(program_.form().cmdsetforlinearitycal);
        program_.ticks(4);
    }

    void start_run() {
        program_.press(program_.form().cmdcalint);
        ASSERT_EQ(program_.state(), "calibrationint");
    }

    /// Ticks until the run has ended; at most for 40 minutes.
    void run_to_the_end() {
        for (int tick = 0; tick < 24000 && program_.state() == "calibrationint"; ++tick) {
            program_.ticks(1);
        }
    }

    [[nodiscard]] int errors() { return std::stoi(program_.form().calerorcnt.caption()); }
    [[nodiscard]] int largest() { return std::stoi(program_.form().calerormax.caption()); }
    [[nodiscard]] const std::string& calstatus() { return program_.form().calstatus.caption(); }

    Calibrated program_;
};

TEST_F(LinearityOnTheInstrument, RunsToThe8000thPointInHalfAnHour) {
    const std::size_t before = program_.log.frames.size();
    start_run();
    const auto begun = program_.clock.now();
    ASSERT_EQ(program_.log.frames.size(), before + 1);
    EXPECT_EQ(frames_of(program_, before)[0][0], 29);
    program_.ticks(600);
    EXPECT_EQ(program_.form().calnote.caption(), "Time left: about 30 minutes");
    run_to_the_end();
    EXPECT_EQ(program_.state(), "stoped");
    EXPECT_EQ(calstatus(), "Calibration Completed");
    EXPECT_EQ(std::chrono::round<std::chrono::minutes>(program_.clock.now() - begun).count(), 30);
    // The instrument reports an error of 2 to 5 ps at 3 points of 100.
    EXPECT_NEAR(errors(), 240, 60);
    EXPECT_EQ(largest(), 5);
    EXPECT_EQ(program_.log.frames.size(), before + 1);
}

TEST_F(LinearityOnTheInstrument, BrokenOffItGoesOnWhereItWas) {
    start_run();
    program_.ticks(2250);
    program_.press(program_.form().cmdcalstop);
    program_.ticks(1);
    EXPECT_EQ(program_.status(), "Stopped");
    const int reached = program_.scope.parts().frmcalibration.linearity().point();
    EXPECT_NEAR(reached, 2500 + 1000, 2);
    const int counted = errors();
    start_run();
    program_.ticks(5);
    std::string expected = "Calibrating ";
    expected += std::to_string(reached + 1);
    EXPECT_EQ(calstatus(), expected + " of 10500 points");
    EXPECT_GE(errors(), counted);
    const auto resumed = program_.clock.now();
    run_to_the_end();
    EXPECT_EQ(calstatus(), "Calibration Completed");
    // 7000 points are left.
    EXPECT_NEAR(std::chrono::duration<double>(program_.clock.now() - resumed).count(), 1575, 5);
}

TEST_F(LinearityOnTheInstrument, MissingBytesKeepItWaiting) {
    start_run();
    program_.simulation.bench().faults.lose_every = 100;
    run_to_the_end();
    EXPECT_EQ(program_.state(), "calibrationint");
    // 80 of 8000 bytes were lost.
    EXPECT_EQ(calstatus(), "Calibrating 10419 of 10500 points");
    EXPECT_TRUE(program_.form().calnote.caption().starts_with("No point has come for"));
    program_.simulation.bench().faults.lose_every = 0;
    program_.press(program_.form().cmdcalstop);
    start_run();
    run_to_the_end();
    EXPECT_EQ(calstatus(), "Calibration Completed");
}

TEST(SoftwareOffsetOnTheInstrument, MovesTheTraceByFourCodesAndBack) {
    Program program;
    program.simulation.bench().samplers = {simulator::SamplerRoute::disconnected,
                                           simulator::SamplerRoute::disconnected};
    program.simulation.bench().errors.offset = {{{30.0, 30.0}, {-40.0, -40.0}}};
    ASSERT_TRUE(program.scope.start());
    program.ticks(6);
    CheckBox& item = program.scope.panel().cmdcaloofset;
    program.scope.act([&] { item.set_checked(true); });
    program.ticks(4);
    // 501 * 2078 / 500 = 2082; (2082 + 501 * 2008) / 500 = 2016: corrections -34 and 32.
    const Samples& samples = program.scope.parts().samples;
    EXPECT_EQ(samples[0].raw[300], 2078 - 34);
    EXPECT_EQ(samples[1].raw[300], 2008 + 32);
    program.scope.act([&] { item.set_checked(false); });
    program.ticks(4);
    EXPECT_EQ(samples[0].raw[300], 2078);
    EXPECT_EQ(samples[1].raw[300], 2008);
}

} // namespace
} // namespace kv408
