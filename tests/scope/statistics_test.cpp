// Statistics of the bench's known signals, over sweeps of the whole program.

#include <gtest/gtest.h>

#include "export/statistics_table.h"
#include "measure/measurement_rows.h"
#include "scope/program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

/// A program that sweeps a sine of 400 mVpp and 10 MHz on CH1 and a pulse of 300 mVpp and 20 MHz,
/// 40 % high, on CH2, with a code of noise.
struct Watched : Program {
    Watched() {
        simulation.bench().sampler_noise_codes = 1.0;
        EXPECT_TRUE(scope.start());
        ticks(10);
        scope.act([this] { scope.panel().mnustatistics.click(); });
    }

    StatisticsDialog& dialog() { return scope.tools().statistics(); }

    const MeasurementStatistics& of(std::size_t channel, std::string_view name) {
        return dialog().statistics().of(channel, row_of(name));
    }

    static std::size_t row_of(std::string_view name) {
        return static_cast<std::size_t>(measurement_row(name) - measurement_rows().data());
    }
};

TEST(StatisticsOfTheProgram, AreThoseOfTheSignals) {
    Watched program;
    program.ticks(60);
    const std::uint64_t sweeps = program.dialog().statistics().sweeps();
    EXPECT_GE(sweeps, 20U);
    const RunningStatistics& peaks = program.of(0, "Vpp").values;
    EXPECT_EQ(peaks.count(), sweeps);
    EXPECT_NEAR(peaks.mean(), 0.4, 0.006);
    EXPECT_GT(peaks.deviation(), 0.0);
    // Noise of a code is half a millivolt; the extremes of 640 samples spread less than that.
    EXPECT_LT(peaks.deviation(), 0.0015);
    EXPECT_LE(peaks.least(), peaks.mean());
    EXPECT_GE(peaks.greatest(), peaks.mean());
    EXPECT_NEAR(program.of(0, "Frequency").values.mean(), 10e6, 0.05e6);
    EXPECT_NEAR(program.of(1, "Frequency").values.mean(), 20e6, 0.1e6);
    EXPECT_NEAR(program.of(1, "tPuls+").values.mean(), 20e-9, 0.3e-9);
    EXPECT_EQ(program.dialog().trend(1, Watched::row_of("tPuls+")).points().size(), sweeps);
    // Present is what the panel shows.
    program.choose(program.scope.panel().measurement[0].selector, "Vpp");
    program.ticks(2);
    EXPECT_EQ(program.scope.panel().measurement[0].ch1.caption(),
              present_text(program.dialog().statistics(), 0, Watched::row_of("Vpp")) + " ");
}

TEST(StatisticsOfTheProgram, SayWhySweepsHaveNoValue) {
    Watched program;
    // Half a period of CH2 fills the screen at most: a pulse has no end there.
    program.choose(program.scope.panel().seltimediv, "1ns/div");
    program.ticks(40);
    const MeasurementStatistics& period = program.of(1, "Period");
    EXPECT_EQ(period.values.count(), 0U);
    EXPECT_EQ(period.without.at(static_cast<std::size_t>(NoValue::no_edge)),
              program.dialog().statistics().sweeps());
    EXPECT_GT(program.dialog().statistics().sweeps(), 10U);
    // Right after a line without a signal an edge takes no time that can be told.
    simulator::silence(program.simulation.bench());
    program.simulation.bench().samplers[ch2] = simulator::SamplerRoute::disconnected;
    program.choose(program.scope.panel().seltimediv, "20ns/div");
    program.ticks(20);
    const auto steep = [&program] {
        return program.of(1, "tRise").without.at(static_cast<std::size_t>(NoValue::too_steep));
    };
    EXPECT_EQ(steep(), 0U);
    program.simulation.bench().samplers[ch2] = simulator::SamplerRoute::own_signal;
    program.ticks(20);
    EXPECT_GT(steep(), 0U);
    EXPECT_LT(steep(), 6U);
}

TEST(StatisticsOfTheProgram, BeginAnewWhenThePanelChanges) {
    Watched program;
    program.ticks(30);
    ASSERT_GT(program.of(0, "VMax").values.count(), 5U);
    const std::uint64_t before = program.dialog().statistics().beginnings();
    program.choose(program.channel(ch1).vdiv, "0.2V");
    while (program.dialog().statistics().beginnings() == before) {
        program.ticks(1);
    }
    EXPECT_EQ(program.of(0, "VMax").values.count(), 0U);
    program.ticks(10);
    EXPECT_GT(program.of(0, "VMax").values.count(), 1U);
    EXPECT_NEAR(program.of(0, "VMax").values.mean(), 0.2, 0.006);
}

TEST(StatisticsOfTheProgram, StopTheSweepThatLiesOutsideTheLimits) {
    Watched program;
    StatisticsControls& controls = program.dialog().controls();
    program.scope.act([&] {
        program.dialog().choose(0, Watched::row_of("Vpp"));
        controls.txtStatisticsHigh.set_text("450mV");
        controls.cmbStatisticsAction.set_index(2);
    });
    program.ticks(20);
    EXPECT_EQ(program.status(), "Running");
    program.simulation.bench().sources[0].amplitude_mvpp = 500.0;
    program.ticks(10);
    EXPECT_EQ(program.state(), "stoped");
    EXPECT_EQ(program.of(0, "Vpp").outside, 1U) << "no sweep after it";
    EXPECT_GT(*program.of(0, "Vpp").present->value, 0.45);
    const std::size_t frames = program.log.frames.size();
    program.ticks(10);
    EXPECT_EQ(program.log.frames.size(), frames);
    EXPECT_TRUE(program.boxes.shown.empty());
}

TEST(StatisticsOfTheProgram, SaveASnapshotOfWhatLiesOutsideTheLimits) {
    Watched program;
    program.scope.act([&] {
        program.dialog().choose(0, Watched::row_of("Vpp"));
        program.dialog().controls().txtStatisticsLow.set_text("0.45");
        program.dialog().controls().cmbStatisticsAction.set_index(3);
    });
    while (program.of(0, "Vpp").outside == 0) {
        program.ticks(1);
    }
    program.dialog().wait_until_written();
    const auto snapshot =
        std::find_if(program.files.files.begin(), program.files.files.end(),
                     [](const auto& file) { return file.first.ends_with(".bmp"); });
    ASSERT_NE(snapshot, program.files.files.end());
    EXPECT_EQ(snapshot->second.substr(0, 2), "BM");
    EXPECT_TRUE(program.boxes.shown.empty()) << "nobody is there to answer";
}

TEST(StatisticsOfTheProgram, ChangeNoFrame) {
    Program plain;
    Program watched;
    for (Program* const program : {&plain, &watched}) {
        EXPECT_TRUE(program->scope.start());
        program->ticks(5);
    }
    watched.scope.act([&] { watched.scope.panel().mnustatistics.click(); });
    plain.ticks(20);
    watched.ticks(20);
    EXPECT_GT(watched.scope.tools().statistics().statistics().sweeps(), 5U);
    EXPECT_EQ(frames_of(plain), frames_of(watched));
}

} // namespace
} // namespace kv408
