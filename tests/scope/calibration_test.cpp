// The calibration on the simulated instrument: everything through the form's buttons, the errors of
// the instrument gone afterwards, frame by frame.

#include <algorithm>
#include <cmath>
#include <random>

#include "scope/calibrated_program.h"

namespace kv408 {
namespace {

/// What is left after a calibration.
struct Left {
    double low_gain = 0.0;
    double high_gain = 0.0;
    double offset = 0.0;
    double time = 0.0;

    void take(Calibrated& program) {
        for (const std::size_t channel : {std::size_t{0}, std::size_t{1}}) {
            low_gain = std::max(low_gain, std::abs(program.gain(channel, 0) - 1.0));
            high_gain = std::max(high_gain, std::abs(program.gain(channel, 1) - 1.0));
            offset = std::max({offset, std::abs(program.offset(channel, 0)),
                               std::abs(program.offset(channel, 1))});
        }
        time = std::max(time, std::abs(program.time_scale() - 1.0));
    }

    void expect_small() const {
        EXPECT_LT(low_gain, 0.003);
        EXPECT_LT(high_gain, 0.006);
        EXPECT_LT(offset, 2.0);
        EXPECT_LT(time, 0.001);
    }
};

TEST(CalibrationOnTheInstrument, TakesTheErrorsOfDeliveryAway) {
    Calibrated program;
    program.simulation.set_factory_state();
    Left before;
    before.take(program);
    EXPECT_NEAR(before.low_gain, 0.03, 0.001);
    EXPECT_NEAR(before.high_gain, 0.03, 0.001);
    EXPECT_NEAR(before.offset, 20.0, 0.5);
    EXPECT_NEAR(before.time, 0.02, 0.001);
    program.open();
    program.calibrate_all();
    Left left;
    left.take(program);
    left.expect_small();
}

/// Gives the sampler errors, and the record values, that leave anything that the procedures accept.
void set_random_errors(simulator::Simulation& simulation, std::uint32_t seed) {
    std::mt19937 random(seed);
    const auto between = [&random](double least, double most) {
        return least + (most - least) * (static_cast<double>(random()) / 4294967296.0);
    };
    const auto write = [&simulation](std::size_t index, double value) {
        simulation.flash().write(static_cast<std::uint16_t>(0xA400 + index),
                                 static_cast<std::uint16_t>(std::lround(value)));
    };
    simulator::HardwareErrors& errors = simulation.bench().errors;
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (std::size_t range = 0; range < 2; ++range) {
            const double record_gain = std::round(between(9500.0, 10500.0));
            write(4 + 2 * channel + range, record_gain);
            errors.gain.at(channel).at(range) = between(0.915, 1.105) * 10000.0 / record_gain;
            write(2 * channel + range, between(1950.0, 2150.0));
            errors.offset.at(channel).at(range) = between(-100.0, 100.0);
        }
    }
    const double record_scale = std::round(between(9500.0, 10500.0));
    write(8, record_scale);
    errors.time_scale = between(0.905, 1.095) * 10000.0 / record_scale;
}

class RandomErrors : public testing::TestWithParam<int> {};

TEST_P(RandomErrors, AreTakenAway) {
    Calibrated program;
    set_random_errors(program.simulation, static_cast<std::uint32_t>(GetParam()));
    program.open();
    program.calibrate_all();
    Left left;
    left.take(program);
    left.expect_small();
}

INSTANTIATE_TEST_SUITE_P(Twenty, RandomErrors, testing::Range(1, 21));

TEST(CalibrationOnTheInstrument, OfAnInstrumentThatFellSilentIsRefused) {
    for (const bool power : {true, false}) {
        Calibrated program;
        program.open();
        CalibrationForm& form = program.form();
        connect(program.simulation.bench(), TestConnection::sine_200mv_ch1);
        program.press(form.cmdsetforcalgainh);
        program.ticks(10);
        simulator::Faults& faults = program.simulation.bench().faults;
        faults.no_power = power;
        faults.lose_every = power ? 0 : 100;
        program.ticks(50);
        program.boxes.shown.clear();
        program.press(form.cmdcalgain1h);
        ASSERT_EQ(program.boxes.shown.size(), 1U) << form.calstatus.caption();
        EXPECT_EQ(program.boxes.shown[0].text,
                  "Sampled data out of range!\nMake sure that trigger signal is present and\n"
                  "Sampler input CH1 is connected to trigger out");
        EXPECT_TRUE(form.calstatus.caption().starts_with("Ready for "));
        faults = {};
        program.ticks(10);
        program.press(form.cmdcalgain1h);
        EXPECT_EQ(program.boxes.shown.size(), 1U);
        EXPECT_TRUE(form.calstatus.caption().starts_with("CH1 high gain calibration complete!"));
    }
}

TEST(CalibrationOnTheInstrument, AFlatLineAndASingleEdgeHaveNoFrequency) {
    for (const bool flat : {true, false}) {
        Calibrated program;
        program.open();
        CalibrationForm& form = program.form();
        simulator::TestBench& bench = program.simulation.bench();
        connect(bench, TestConnection::sine_1v_ch1);
        silence(bench);
        program.press(form.cmdsetforcalhscale);
        program.ticks(10);
        if (flat) {
            bench.samplers[0] = simulator::SamplerRoute::disconnected;
        } else {
            // Half a period is 1.25 us, the plot shows 1 us.
            bench.sources[0].kind = simulator::SignalKind::square;
            bench.sources[0].frequency_hz = 400e3;
        }
        program.ticks(10);
        EXPECT_EQ(program.scope.parts().measurements.meastexts[0][meas::frequency], "---");
        program.boxes.shown.clear();
        program.press(form.cmdcaltb);
        ASSERT_EQ(program.boxes.shown.size(), 1U) << form.calstatus.caption();
        EXPECT_EQ(program.boxes.shown[0].text, "Frequency out of range!");
    }
}

TEST(CalibrationOnTheInstrument, FromDefaultsThatItDoesNotWorkWithIsTold) {
    Calibrated program;
    program.simulation.set_factory_state();
    program.open();
    CalibrationForm& form = program.form();
    program.boxes.answers = {MessageAnswer::yes};
    program.press(form.cmdsetalltodefault);
    connect(program.simulation.bench(), TestConnection::sine_1v_ch1);
    program.press(form.cmdsetforcalgainl);
    program.ticks(10);
    program.press(form.cmdcalgain);
    EXPECT_NE(form.calnote.caption().find("The instrument works with other values"),
              std::string::npos)
        << form.calnote.caption();
    program.press(form.cmdwritecal);
    // The factory's 10100 in place of the 10000 that it was computed from.
    EXPECT_NEAR(std::abs(program.gain(0, 0) - 1.0), 0.01, 0.003);
    EXPECT_NE(form.calnote.caption().find("calibrate it again"), std::string::npos)
        << form.calnote.caption();
    program.calibrate(TestConnection::sine_1v_ch1, form.cmdsetforcalgainl, form.cmdcalgain);
    EXPECT_NEAR(program.gain(0, 0), 1.0, 0.003);
}

TEST(CalibrationOnTheInstrument, ALargeErrorOfTimeTakesASecondTime) {
    Calibrated program;
    program.simulation.set_calibrated();
    program.simulation.bench().errors.time_scale = 1.08;
    program.open();
    CalibrationForm& form = program.form();
    program.calibrate(TestConnection::sine_1v_ch1, form.cmdsetforcalhscale, form.cmdcaltb);
    EXPECT_TRUE(program.second_time);
    // The square of 8 % is left.
    EXPECT_NEAR(program.time_scale(), 1.0 - 0.08 * 0.08, 0.0005);
    program.calibrate(TestConnection::sine_1v_ch1, form.cmdsetforcalhscale, form.cmdcaltb);
    EXPECT_FALSE(program.second_time);
    EXPECT_NEAR(program.time_scale(), 1.0, 0.001);
}

TEST(CalibrationOnTheInstrument, TheWrongConnectionIsNoticed) {
    Calibrated program;
    program.open();
    CalibrationForm& form = program.form();
    const auto refused = [&program](TestConnection connection, Button& set_up, Button& compute) {
        connect(program.simulation.bench(), connection);
        program.press(set_up);
        program.ticks(10);
        program.press(compute);
        return program.boxes.shown.back().text;
    };
    const std::string out_of_range = "Sampled data out of range!\nMake sure that trigger signal is "
                                     "present and\n";
    EXPECT_EQ(refused(TestConnection::sine_1v_ch2, form.cmdsetforcalgainl, form.cmdcalgain),
              out_of_range + "Sampler input CH1 is connected to trigger out");
    EXPECT_EQ(refused(TestConnection::sine_1v_ch1, form.cmdsetforcalgainl2, form.cmdcalg2l),
              out_of_range + "Sampler input CH2 is connected to trigger out");
    EXPECT_EQ(refused(TestConnection::sine_200mv_ch1, form.cmdsetforcalh, form.cmdcaoffseth),
              out_of_range + "Sampler inputs are disconnected or 0V");
    EXPECT_EQ(refused(TestConnection::inputs_open, form.cmdsetforcalhscale, form.cmdcaltb),
              "Frequency out of range!");
}

} // namespace
} // namespace kv408
