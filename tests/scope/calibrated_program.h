#pragma once

#include <cmath>

#include "calibration/calibration_form.h"
#include "scope/program.h"
#include "simulator/flash.h"
#include "simulator/test_connections.h"

namespace kv408 {

using simulator::TestConnection;

/// An instrument with errors and the noise of an ordinary one, its program started.
struct Calibrated : Program {
    Calibrated() : Program(false) {}

    CalibrationForm& form() { return scope.calibration_form(); }

    /// Presses `button`, with OK to every question.
    void press(Button& button) {
        scope.act([&] { button.click(); });
    }

    /// Opens the form.
    void press_menu() {
        scope.act([&] { scope.panel().mnucalibration.click(); });
    }

    /// Starts the program and opens the form.
    void open() {
        ASSERT_TRUE(scope.start());
        ticks(4);
        press_menu();
        ASSERT_EQ(form().calstatus.caption(), "Read complete");
    }

    /// One calibration as a person does it: connects, presses, waits, presses, writes.
    void calibrate(TestConnection connection, Button& set_up, Button& compute) {
        connect(simulation.bench(), connection);
        press(set_up);
        // The levels of the measurements settle over three sweeps.
        ticks(10);
        const std::size_t before = boxes.shown.size();
        press(compute);
        ASSERT_EQ(boxes.shown.size(), before)
            << compute.caption() << ": " << boxes.shown.back().text
            << boxes.shown.back().informative;
        second_time = form().calnote.caption().find("a second time") != std::string::npos;
        press(form().cmdwritecal);
        ASSERT_EQ(form().calstatus.caption(), "Write complete");
        ASSERT_TRUE(form().calnote.caption().starts_with("Read back and found right."))
            << form().calnote.caption();
    }

    /// All calibrations but the linearity in the order of the form.
    void calibrate_all() {
        CalibrationForm& f = form();
        calibrate(TestConnection::sine_200mv_ch1, f.cmdsetforcalgainh, f.cmdcalgain1h);
        calibrate(TestConnection::sine_200mv_ch2, f.cmdsetforcalgainh2, f.cmdcalgain2h);
        calibrate(TestConnection::sine_1v_ch1, f.cmdsetforcalgainl, f.cmdcalgain);
        calibrate(TestConnection::sine_1v_ch2, f.cmdsetforcalgainl2, f.cmdcalg2l);
        calibrate(TestConnection::inputs_open, f.cmdsetforcalh, f.cmdcaoffseth);
        calibrate(TestConnection::inputs_open, f.cmdsetforcall, f.cmdcaoffsetl);
        calibrate(TestConnection::sine_1v_ch1, f.cmdsetforcalhscale, f.cmdcaltb);
        if (second_time) {
            calibrate(TestConnection::sine_1v_ch1, f.cmdsetforcalhscale, f.cmdcaltb);
        }
    }

    /// The form has asked for a second time of the last calibration.
    bool second_time = false;

    /// Gain of the sampler with its correction; 1 is right.
    double gain(std::size_t channel, std::size_t range) {
        const auto place = static_cast<std::uint16_t>(4 + 2 * channel + range);
        return simulation.bench().errors.gain.at(channel).at(range) *
               simulation.flash().record(place) / 10000.0;
    }

    /// Offset left, codes.
    double offset(std::size_t channel, std::size_t range) {
        const auto place = static_cast<std::uint16_t>(2 * channel + range);
        return simulation.bench().errors.offset.at(channel).at(range) +
               simulation.flash().record(place) - 2048.0;
    }

    /// Actual over nominal delay; 1 is right.
    double time_scale() {
        return simulation.bench().errors.time_scale * simulation.flash().record(8) / 10000.0;
    }
};

} // namespace kv408
