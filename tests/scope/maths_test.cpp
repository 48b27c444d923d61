// Computed traces of the whole program on the simulated instrument.

#include <cmath>

#include <gtest/gtest.h>

#include "measure/measurement_rows.h"
#include "panel/time_base.h"
#include "scope/program.h"
#include "scope/tools.h"
#include "state/plot_geometry.h"
#include "support/series_stride.h"

namespace kv408 {
namespace {

struct WithMaths : Program {
    explicit WithMaths(bool noise_free = true) : Program(noise_free) {
        EXPECT_TRUE(scope.start());
        ticks(10);
    }

    [[nodiscard]] MathsTool& tool(std::size_t place = 0) {
        return scope.tools().maths().tool(place);
    }

    void compute(MathsFunction function, std::size_t place = 0) {
        scope.act(
            [&] { tool(place).controls().cmbMathsFunction.set_index(static_cast<int>(function)); });
    }

    void stop() {
        scope.act([this] { scope.panel().cmdstop.click(); });
        ticks(3);
    }

    /// How many pixels of the plot have the colour of the trace in `place`.
    [[nodiscard]] std::ptrdiff_t coloured(std::size_t place = 0) {
        const auto pixels = scope.picture().surface().pixels();
        return std::count(pixels.begin(), pixels.end(),
                          pixel_of(*tool(place).controls().lblMaths.fore_colour()));
    }

    [[nodiscard]] const Sweep& last() { return *scope.sweeps().last_complete(); }
};

TEST(MathsOfTheProgram, ChangeNoFrameAndNoPixelOnceTheyAreOff) {
    WithMaths plain;
    WithMaths with;
    with.compute(MathsFunction::difference, 0);
    with.compute(MathsFunction::envelope, 1);
    plain.ticks(20);
    with.ticks(20);
    EXPECT_GT(with.coloured(0), 500);
    EXPECT_GT(with.coloured(1), 100);
    with.compute(MathsFunction::off, 0);
    with.compute(MathsFunction::off, 1);
    plain.ticks(2);
    with.ticks(2);
    EXPECT_EQ(frames_of(plain), frames_of(with));
    const auto pixels = [](Program& program) {
        const auto all = program.scope.picture().surface().pixels();
        return std::vector<Pixel>(all.begin(), all.end());
    };
    EXPECT_EQ(pixels(plain), pixels(with));
}

// The panel measures the inverted channel as the window measures its negative: at every time base.
TEST(MathsOfTheProgram, MeasureTheNegativeOfAChannelAsThePanelDoesTheInvertedOne) {
    WithMaths program;
    program.compute(MathsFunction::negative);
    program.scope.act([&] { program.scope.panel().check1.press(true); });
    const auto bases = time_base_rows();
    for (std::size_t base = 0; base < bases.size(); base += series_stride) {
        SCOPED_TRACE(bases[base].text);
        program.simulation.bench().sources[0].frequency_hz = 2.5 * bases[base].samplerate / 640.0;
        program.choose(program.scope.panel().seltimediv, std::string(bases[base].text));
        program.scope.act([&] { program.channel(ch1).invert.press(false); });
        program.ticks(bases[base].pointmode ? 8 : 20);
        const auto rows = measurement_rows();
        const std::vector<MeasuredValue> negative = program.tool().values();
        ASSERT_EQ(negative.size(), rows.size());
        program.scope.act([&] { program.channel(ch1).invert.press(true); });
        program.ticks(bases[base].pointmode ? 8 : 20);
        const double samplerate = bases[base].samplerate;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const MeasuredValue inverted = measured_value(
                rows[row], program.scope.parts().measurements.measresults[ch1], samplerate);
            ASSERT_EQ(negative[row].value.has_value(), inverted.value.has_value())
                << rows[row].name;
            if (inverted.value) {
                const double scale =
                    rows[row].unit == MeasurementUnit::volt ? 0.4 : *inverted.value;
                EXPECT_NEAR(*negative[row].value, *inverted.value, 0.02 * scale) << rows[row].name;
            }
        }
    }
}

TEST(MathsOfTheProgram, AreTheirSweepsInPointModeAndWhenStopped) {
    for (const char* const base : {"20ns/div", "500ns/div", "1us/div"}) {
        SCOPED_TRACE(base);
        WithMaths program;
        program.choose(program.scope.panel().seltimediv, base);
        program.compute(MathsFunction::difference);
        program.ticks(20);
        program.stop();
        const auto trace = program.tool().trace();
        ASSERT_NE(trace, nullptr);
        const Sweep& last = program.last();
        EXPECT_EQ(trace->sweep, last.number);
        ASSERT_EQ(trace->values.size(), last.channel[ch1]->mv.size());
        for (std::size_t point = 0; point < trace->values.size(); ++point) {
            EXPECT_EQ(trace->values[point], last.channel[ch1]->mv[point] / 1000.0 -
                                                last.channel[ch2]->mv[point] / 1000.0);
        }
        EXPECT_GT(program.coloured(), 300);
        program.ticks(20);
        EXPECT_EQ(program.tool().trace(), trace);
        program.compute(MathsFunction::product); // of the same sweep
        EXPECT_EQ(program.tool().trace()->sweep, last.number);
    }
}

TEST(MathsOfTheProgram, GoOverTheTimeThatChannelsWithTwoDelaysHaveInCommon) {
    WithMaths program;
    program.scope.act([&] {
        program.channel(ch2).psofset.focus();
        program.channel(ch2).psofset.set_text("40ns");
        program.channel(ch2).psofset.enter();
    });
    program.compute(MathsFunction::difference);
    program.ticks(20);
    const ChannelSweep& one = *program.last().channel[ch1];
    const ChannelSweep& two = *program.last().channel[ch2];
    ASSERT_GT(two.first_time, one.first_time);
    const auto trace = program.tool().trace();
    ASSERT_NE(trace, nullptr);
    const double last_time = one.first_time + 649.0 * one.time_per_point;
    const double first_common =
        std::ceil((two.first_time - one.first_time) / one.time_per_point) * one.time_per_point;
    EXPECT_EQ(trace->first_time, one.first_time + first_common);
    EXPECT_EQ(trace->first_time +
                  static_cast<double>(trace->values.size() - 1) * trace->time_per_point,
              last_time);
    for (std::size_t index = 0; index < trace->values.size(); index += 50) {
        const double time = trace->first_time + static_cast<double>(index) * trace->time_per_point;
        const double place = (time - two.first_time) / two.time_per_point;
        const auto below = static_cast<std::size_t>(place);
        const double part = place - static_cast<double>(below);
        const double b = two.mv[below] * (1.0 - part) + two.mv[below + 1] * part;
        EXPECT_NEAR(trace->values[index], (one.mv[trace->first_point + index] - b) / 1000.0, 1e-12);
    }
}

TEST(MathsOfTheProgram, BeginMeanAndEnvelopeAnewWithTheSetUp) {
    WithMaths program(false);
    program.compute(MathsFunction::mean);
    program.ticks(30);
    const std::size_t before = program.tool().trace()->sweeps;
    EXPECT_GT(before, 8U);
    program.choose(program.channel(ch1).vdiv, "20mV"); // another range
    program.ticks(8);
    EXPECT_LT(program.tool().trace()->sweeps, before);
    program.ticks(40);
    EXPECT_EQ(program.tool().trace()->sweeps, 16U);
    program.choose(program.scope.panel().seltimediv, "50ns/div");
    program.ticks(8);
    EXPECT_LT(program.tool().trace()->sweeps, 8U);
}

TEST(MathsOfTheProgram, AreTakenOffWithTheTracesWhileThereIsNoTrigger) {
    WithMaths program;
    program.compute(MathsFunction::negative);
    program.ticks(10);
    EXPECT_GT(program.coloured(), 300);
    program.simulation.bench().triggers = {simulator::TriggerRoute::disconnected,
                                           simulator::TriggerRoute::disconnected};
    program.ticks(40);
    EXPECT_EQ(program.status(), "Waiting For TRIGGER");
    EXPECT_EQ(program.coloured(), 0);
}

} // namespace
} // namespace kv408
