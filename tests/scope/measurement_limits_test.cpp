// What the manual says of results that do not tell what the signal is: who changes one of these
// changes docs/manual/measurements.md, or docs/manual/first-picture.md for the last.

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "scope/program.h"

namespace kv408 {
namespace {

using simulator::SignalKind;
using simulator::TriggerRoute;

/// A program with a signal of 400 mVpp and 10 MHz at CH1 and TRIG1, of shape `kind` with edges of
/// 800 ps, on a calibrated instrument with the noise of its converter and no other.
struct Limited : Program {
    explicit Limited(SignalKind kind) {
        signal().kind = kind;
        signal().rise_time_ps = 800.0;
        simulation.bench().sampler_noise_codes = 1.0;
        EXPECT_TRUE(scope.start());
    }

    simulator::Source& signal() { return simulation.bench().sources[0]; }

    /// Triggers on the clock of the other generator, which has no jitter.
    void trigger_on_steady_clock() {
        simulation.bench().sources[1].frequency_hz = 10e6;
        simulation.bench().triggers = {TriggerRoute::clock_2, TriggerRoute::clock_2};
    }

    void delay_by(const std::string& picoseconds) {
        scope.act([&] {
            channel(ch1).psofset.set_text(picoseconds);
            channel(ch1).psofset.enter();
        });
    }

    void sweep_at(const std::string& time_div) {
        choose(scope.panel().seltimediv, time_div);
        ticks(14);
    }

    /// The text of a measurement of CH1.
    [[nodiscard]] const std::string& text(std::size_t field) const {
        return scope.parts().measurements.meastexts[ch1].at(field);
    }

    /// A measurement of CH1 in millivolts or columns.
    [[nodiscard]] double value(std::size_t field) const {
        return scope.parts().measurements.measresults[ch1].at(field);
    }

    /// A time of CH1 in picoseconds.
    [[nodiscard]] double picoseconds(std::size_t field) const {
        return value(field) / scope.parts().time_base_state.samplerate * 1e12;
    }
};

TEST(MeasurementLimits, AStepReadsFourFifthsOfAColumn) {
    for (const char* const time_div : {"20ns/div", "200ns/div", "500ns/div"}) {
        Limited program(SignalKind::square);
        program.signal().rise_time_ps = 0.0;
        program.sweep_at(time_div);
        EXPECT_NEAR(program.value(meas::rise), 0.8, 0.01) << time_div;
        EXPECT_NEAR(program.value(meas::fall), 0.8, 0.01) << time_div;
    }
}

TEST(MeasurementLimits, NoTimeIsToldOnlyRightAfterALineWithoutASignal) {
    Limited program(SignalKind::square);
    program.trigger_on_steady_clock();
    simulator::silence(program.simulation.bench());
    program.simulation.bench().samplers[ch1] = simulator::SamplerRoute::disconnected;
    program.sweep_at("20ns/div");
    ASSERT_EQ(program.text(meas::rise), "---");
    program.simulation.bench().samplers[ch1] = simulator::SamplerRoute::own_signal;
    int told = 0;
    for (int tick = 0; tick < 20; ++tick) {
        program.ticks(1);
        told += program.text(meas::rise) == "-inf-" ? 1 : 0;
    }
    EXPECT_GT(told, 0);
    EXPECT_LT(told, 6);
    EXPECT_GT(program.value(meas::rise), 0.0);
}

TEST(MeasurementLimits, OfTheEdgeThatTriggersTheUpperHalfIsMeasured) {
    Limited program(SignalKind::square);
    program.sweep_at("2ns/div");
    EXPECT_NEAR(program.value(meas::vmin), 0.0, 8.0);
    EXPECT_NEAR(program.picoseconds(meas::rise), 400.0, 60.0);
    for (const std::size_t field :
         {meas::frequency, meas::period, meas::pulse_high, meas::pulse_low}) {
        EXPECT_EQ(program.text(field), "---");
    }
    program.sweep_at("10ns/div");
    EXPECT_NEAR(program.value(meas::vmin), -200.0, 8.0);
    EXPECT_EQ(program.text(meas::rise), "---");
    program.choose(program.scope.panel().trigeredge, "Negative");
    program.delay_by("45000");
    program.sweep_at("2ns/div");
    EXPECT_NEAR(program.value(meas::vmin), -200.0, 8.0);
    EXPECT_NEAR(program.picoseconds(meas::rise), 800.0, 30.0);
}

TEST(MeasurementLimits, OfLessThanAPeriodThePartIsMeasuredThatIsSeen) {
    Limited program(SignalKind::sine);
    program.sweep_at("5ns/div"); // the upper half of the sine, whose mean is 2 / pi of its peak
    EXPECT_EQ(program.text(meas::frequency), "---");
    EXPECT_EQ(program.text(meas::period), "---");
    EXPECT_NEAR(program.value(meas::vmean), 127.3, 2.0);
    EXPECT_NEAR(program.value(meas::vpp), 200.0, 8.0);
}

TEST(MeasurementLimits, OfTooManyPeriodsAnotherFrequencyIsSeen) {
    Limited program(SignalKind::sine);
    simulator::silence(program.simulation.bench());
    program.sweep_at("1us/div");
    EXPECT_EQ(program.text(meas::frequency), "9.998MHz");
    program.sweep_at("2us/div");
    EXPECT_NEAR(program.value(meas::period), 16.0, 0.02); // columns of 31.25 ns
    program.sweep_at("100us/div");
    program.ticks(4);
    EXPECT_EQ(program.text(meas::frequency), "73.94kHz");
    EXPECT_NEAR(program.value(meas::vpp), 400.0, 1.0);
    EXPECT_NEAR(program.value(meas::vrms), 141.4, 1.0);
}

TEST(MeasurementLimits, JitterWiderThanAColumnIsMeasuredInPlaceOfTheEdge) {
    Limited program(SignalKind::square);
    program.trigger_on_steady_clock();
    program.choose(program.scope.panel().trigeredge, "Negative");
    program.delay_by("48000");
    program.sweep_at("500ps/div");
    EXPECT_NEAR(program.picoseconds(meas::rise), 800.0, 30.0);
    program.signal().jitter_ps = 100.0; // columns of 7.8 ps
    program.ticks(6);
    double sum = 0.0;
    constexpr int looks = 20;
    for (int look = 0; look < looks; ++look) {
        program.ticks(2);
        sum += program.picoseconds(meas::rise);
        EXPECT_NEAR(program.value(meas::vpp), 400.0, 8.0);
    }
    EXPECT_LT(sum / looks, 650.0);
    program.signal().jitter_ps = 500.0;
    program.delay_by("45000");
    program.sweep_at("2ns/div"); // columns of 31 ps
    int pulses = 0;
    for (int look = 0; look < looks; ++look) {
        program.ticks(2);
        pulses += program.text(meas::frequency).find("GHz") != std::string::npos ? 1 : 0;
    }
    EXPECT_GT(pulses, looks / 2);
}

TEST(MeasurementLimits, WhatLeavesTheConverterReadsItsEnds) {
    Limited program(SignalKind::sine);
    program.sweep_at("50ns/div");
    program.choose(program.channel(ch1).vdiv, "0.1V"); // the screen ends at 400 mV
    program.signal().amplitude_mvpp = 2000.0;
    program.ticks(30);
    EXPECT_NEAR(program.value(meas::vpp), 2000.0, 8.0);
    program.choose(program.channel(ch1).vdiv, "0.5V");
    program.signal().amplitude_mvpp = 5000.0;
    program.ticks(30);
    EXPECT_EQ(program.text(meas::vmax), "1.023V");
    EXPECT_EQ(program.text(meas::vmin), "-1.024V");
    EXPECT_NEAR(program.picoseconds(meas::rise), 8300.0, 700.0);
    EXPECT_NEAR(program.picoseconds(meas::period), 100000.0, 500.0);
}

TEST(MeasurementLimits, AnotherTimeBaseWhileStoppedLeavesTheResultsAsTheyAre) {
    Limited program(SignalKind::sine);
    program.sweep_at("20ns/div");
    program.choose(program.scope.panel().measurement[2].selector, "Frequency");
    program.scope.act([&] {
        program.scope.panel().tabstrip3.select(2);
        program.scope.panel().cmdstop.click();
    });
    program.ticks(3);
    const std::string frequency = program.scope.panel().measurement[2].ch1.caption();
    const std::string before = program.scope.panel().centerfr.caption();
    const auto pixels = [&program] {
        const auto shown = program.scope.picture().surface().pixels();
        return std::vector<std::uint32_t>(shown.begin(), shown.end());
    };
    const auto picture = pixels();
    program.choose(program.scope.panel().seltimediv, "100ns/div");
    program.ticks(5);
    EXPECT_EQ(program.scope.panel().measurement[2].ch1.caption(), frequency);
    EXPECT_TRUE(pixels() == picture);
    EXPECT_EQ(program.scope.panel().tdivtext.caption(), "100ns/div");
    EXPECT_NE(program.scope.panel().centerfr.caption(), before);
}

TEST(MeasurementLimits, AsDeliveredTimeGainAndOffsetAreOff) {
    Program program(false);
    program.simulation.set_factory_state();
    ASSERT_TRUE(program.scope.start());
    program.ticks(30);
    const auto& record = program.scope.parts().measurements.measresults[ch1];
    const double samplerate = program.scope.parts().time_base_state.samplerate;
    EXPECT_NEAR(samplerate / record.at(meas::period), 10.2e6, 0.02e6);
    // 3 % of gain, and of the noise of 1 mV what reaches both ends.
    EXPECT_NEAR(record.at(meas::vpp), 414.0, 4.0);
    EXPECT_NEAR(record.at(meas::vmean), 10.0, 2.0);
}

} // namespace
} // namespace kv408
