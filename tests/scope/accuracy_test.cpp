// A signal of known amplitude, frequency and offset comes back in the sample buffers at every time
// base and V/div, block by block and point by point.

#include <array>
#include <cmath>
#include <numbers>
#include <string>

#include <gtest/gtest.h>

#include "panel/time_base.h"
#include "scope/program.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

using simulator::SignalKind;
using simulator::Source;

/// A sine through its trigger level 0 mV, rising, at delay 0.
struct Sine {
    double amplitude_mvpp;
    double frequency_hz;
    double offset_mv;

    /// Phase at which it rises through 0 mV.
    [[nodiscard]] double start_phase() const {
        return std::asin(-offset_mv / (amplitude_mvpp / 2));
    }

    /// Value at `delay_ps` after the trigger.
    [[nodiscard]] double at(double delay_ps) const {
        return offset_mv +
               amplitude_mvpp / 2 *
                   std::sin(start_phase() + 2 * std::numbers::pi * frequency_hz * delay_ps * 1e-12);
    }
};

/// Delay of the sample behind point `point` of a block: pairs are used again as the stretch asks.
double block_delay_ps(const TimeBaseRow& row, int point) {
    double position = 1.0;
    int pair = 0;
    int used = 0;
    for (int index = 1; index <= point; ++index) {
        used = pair;
        position += row.hstretch;
        ++pair;
        if (position - 1.0 > index) {
            position -= row.hstretch;
            --pair;
        }
    }
    return used * row.tbresolution;
}

/// Delay of point `point` of a point-by-point pass, as the instrument decodes it.
double point_delay_ps(const TimeBaseRow& row, int point) {
    const double delay = std::nearbyint(point * row.tbresolution + 2500.0);
    if (delay <= 10500.0) {
        return delay;
    }
    double divider = std::nearbyint((delay + 10500.0) / 10500.0);
    if (std::fmod(divider, 2.0) == 0.0) {
        divider += 1.0;
    }
    divider = std::max(divider, 3.0);
    return std::nearbyint(delay / divider) * divider;
}

/// Seconds of one division of `row`.
double division_s(const TimeBaseRow& row) {
    return 64.0 / row.samplerate;
}

struct VoltsRow {
    std::string text;
    double millivolts;
    double codes_per_millivolt;
};

const std::array<VoltsRow, 6> volts_rows = {{{"0.5V", 500, 2},
                                             {"0.2V", 200, 2},
                                             {"0.1V", 100, 2},
                                             {"50mV", 50, 6},
                                             {"20mV", 20, 6},
                                             {"10mV", 10, 6}}};

/// Sweeps both channels at `row` and `volts` and compares every point with the sines.
void check(const TimeBaseRow& row, const VoltsRow& volts) {
    SCOPED_TRACE(std::string(row.text) + " " + volts.text);
    Program program;
    const double frequency = 1.25 / (10 * division_s(row));
    const std::array<Sine, 2> sines = {{{3.0 * volts.millivolts, frequency, 0.4 * volts.millivolts},
                                        {3.0 * volts.millivolts, 2 * frequency, 0.0}}};
    for (std::size_t index = 0; index < sines.size(); ++index) {
        Source& source = program.simulation.bench().sources[index];
        source.kind = SignalKind::sine;
        source.amplitude_mvpp = sines[index].amplitude_mvpp;
        source.frequency_hz = sines[index].frequency_hz;
        source.offset_mv = sines[index].offset_mv;
    }
    ASSERT_TRUE(program.scope.start());
    program.scope.act([&] { program.scope.panel().shyst.set_value(2); });
    program.choose(program.channel(ch1).vdiv, volts.text);
    program.choose(program.channel(ch2).vdiv, volts.text);
    program.choose(program.scope.panel().seltimediv, std::string(row.text));
    program.ticks(row.pointmode ? 3 : 4);
    ASSERT_EQ(program.scope.parts().acquisition.ready, (std::array<bool, 2>{true, true}))
        << program.status();
    ASSERT_TRUE(program.boxes.shown.empty()) << program.boxes.shown.front().text;

    // CH2's sine does not rise through 0 at the trigger: it runs on from the start of CH1's period.
    const double trigger_s = sines[0].start_phase() / (2 * std::numbers::pi * frequency);
    const int last = row.pointmode ? 640 : 650;
    for (int point = 1; point <= last; ++point) {
        const double delay_ps =
            row.pointmode ? point_delay_ps(row, point) : block_delay_ps(row, point);
        // Half a code of quantisation.
        const double tolerance = 0.51 / volts.codes_per_millivolt;
        const auto place = static_cast<std::size_t>(point);
        const double second =
            sines[1].amplitude_mvpp / 2 *
            std::sin(2 * std::numbers::pi * sines[1].frequency_hz * (trigger_s + delay_ps * 1e-12));
        ASSERT_NEAR(program.scope.parts().samples[0].mv[place], sines[0].at(delay_ps), tolerance)
            << "CH1 point " << point;
        ASSERT_NEAR(program.scope.parts().samples[1].mv[place], second, tolerance)
            << "CH2 point " << point;
    }
}

TEST(Accuracy, EveryTimeBaseAndVoltsPerDivisionReturnsTheSignal) {
    std::size_t number = 0;
    for (const TimeBaseRow& row : time_base_rows()) {
        for (const VoltsRow& volts : volts_rows) {
            if (number++ % series_stride != 0) {
                continue; // the sanitizers look at how, not at what comes out
            }
            check(row, volts);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(Accuracy, WithNoiseTheMeanAndTheSpreadAreThoseOfTheInstrument) {
    Program program(false);
    simulator::TestBench& bench = program.simulation.bench();
    bench.sources[0] = {.kind = SignalKind::sine, .amplitude_mvpp = 400.0, .frequency_hz = 10e6};
    bench.sampler_noise_codes = 2.0;
    bench.samplers[1] = simulator::SamplerRoute::disconnected;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    const auto& mv = program.scope.parts().samples[1].mv;
    double sum = 0;
    double squares = 0;
    for (std::size_t point = 1; point <= 650; ++point) {
        sum += mv[point];
        squares += mv[point] * mv[point];
    }
    // 2 codes are 1 mV at 0.1V/div. The mean of 650 such samples scatters by 1 / sqrt(650) = 0.04;
    // quantisation adds 0.14 mV to the spread, in squares.
    EXPECT_NEAR(sum / 650, 0.0, 0.2);
    EXPECT_NEAR(std::sqrt(squares / 650), 1.01, 0.15);
}

/// Spread of CH2's samples, which sees nothing but the sampler's noise, in millivolts.
double noise_mv(Program& program) {
    program.ticks(4);
    const auto& mv = program.scope.parts().samples[1].mv;
    double squares = 0;
    for (std::size_t point = 1; point <= 650; ++point) {
        squares += mv[point] * mv[point];
    }
    return std::sqrt(squares / 650);
}

TEST(Accuracy, AveragingHalvesTheNoiseAndSpeedDoublesIt) {
    Program program(false);
    program.simulation.bench().sampler_noise_codes = 8.0;
    program.simulation.bench().samplers[1] = simulator::SamplerRoute::disconnected;
    ASSERT_TRUE(program.scope.start());
    const double normal = noise_mv(program);
    EXPECT_NEAR(normal, 4.0, 0.4);
    program.scope.act([&] { program.scope.panel().average.set_checked(true); });
    EXPECT_TRUE(program.scope.panel().avglabel.visible());
    program.ticks(2);
    EXPECT_NEAR(noise_mv(program), normal / 2, 0.4);
    program.scope.act([&] {
        program.scope.panel().average.set_checked(false);
        program.scope.panel().adcspeed.set_checked(true);
    });
    program.ticks(2);
    EXPECT_NEAR(noise_mv(program), normal * 2, 0.8);
}

TEST(Accuracy, InputViaTriggerUndoesTheHalving) {
    Program program;
    program.simulation.bench().samplers[0] = simulator::SamplerRoute::via_trigger;
    ASSERT_TRUE(program.scope.start());
    program.ticks(4);
    const auto peak = [&] {
        const auto& mv = program.scope.parts().samples[0].mv;
        return *std::max_element(mv.begin() + 1, mv.end());
    };
    EXPECT_NEAR(peak(), 100.0, 0.6);
    program.scope.act([&] { program.channel(ch1).inviatr.set_checked(true); });
    program.ticks(2);
    EXPECT_NEAR(peak(), 200.0, 1.1);
}

} // namespace
} // namespace kv408
