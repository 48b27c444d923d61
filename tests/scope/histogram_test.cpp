// The histogram of a part of the density, over sweeps of the whole program.

#include <gtest/gtest.h>

#include <cmath>

#include "scope/program.h"
#include "scope/tools.h"

namespace kv408 {
namespace {

/// A program that sweeps a flat line with noise of four codes on CH1, with the window open.
struct WithHistogram : Program {
    WithHistogram() {
        EXPECT_TRUE(scope.start());
        simulation.bench().samplers[ch1] = simulator::SamplerRoute::disconnected;
        simulation.bench().sampler_noise_codes = 4.0;
        ticks(10);
        scope.act([this] { dialog().controls().mnuhistogram.click(); });
    }

    HistogramDialog& dialog() { return scope.tools().histogram(); }

    std::optional<ShownHistogram> shown() {
        return scope.picture().drawn().overlays.histogram.shown;
    }
};

TEST(HistogramOfTheProgram, TellsTheNoiseOfTheBench) {
    WithHistogram program;
    EXPECT_TRUE(program.scope.tools().density().controls().chkDensity.checked());
    EXPECT_EQ(program.dialog().controls().lblHistogramValues.caption(), "No hits");
    program.ticks(60);
    const auto statistics = program.dialog().statistics();
    ASSERT_TRUE(statistics);
    // 64 columns of points, each of which has a hit per sweep; a code of 0.1V/div is half a
    // millivolt.
    const double sweeps =
        static_cast<double>(program.scope.tools().density().collected(ch1)->sweeps);
    EXPECT_EQ(statistics->hits, 64 * sweeps);
    EXPECT_NEAR(statistics->sigma, 0.5 * std::sqrt(16.0 + 1.0 / 12), 0.03 * 2.0);
    EXPECT_NEAR(statistics->mean, 0.0, 0.2);
    EXPECT_NEAR(statistics->within_1, 0.6827, 0.05); // in steps of codes
    EXPECT_NEAR(statistics->within_3, 0.9973, 0.004);
    ASSERT_TRUE(program.shown());
    EXPECT_EQ(program.shown()->window, program.dialog().window());
    EXPECT_EQ(program.shown()->bars.size(), 385U) << "a bar for each row of six divisions";
    const std::string table = program.dialog().table();
    EXPECT_EQ(table.rfind("Value\tCH1, V\nHits\t", 0), 0U) << table;
    program.scope.act([&] { program.dialog().close(); });
    EXPECT_FALSE(program.shown());
}

TEST(HistogramOfTheProgram, SaysThatHitsAreMissing) {
    WithHistogram program;
    program.ticks(20);
    const std::string& remark = program.dialog().controls().lblHistogramRemark.caption();
    EXPECT_EQ(remark, "");
    program.simulation.bench().sampler_noise_codes = 1500.0;
    program.scope.act([&] { program.dialog().set_window({100, 0, 200, 513}); });
    program.ticks(20);
    EXPECT_EQ(remark, "Hits lie at an end of the instrument's scale: what the signal has beyond it "
                      "is missing.");
}

TEST(HistogramOfTheProgram, CountsOnlyWhatLiesInItsWindow) {
    WithHistogram program;
    program.ticks(20);
    program.scope.act([&] { program.dialog().set_window({100, 300, 200, 400}); });
    EXPECT_FALSE(program.dialog().statistics()) << "below the line";
    program.scope.act([&] { program.dialog().set_window({100, 200, 101 + 1, 300}); });
    const double sweeps =
        static_cast<double>(program.scope.tools().density().collected(ch1)->sweeps);
    ASSERT_TRUE(program.dialog().statistics());
    EXPECT_EQ(program.dialog().statistics()->hits, 2 * sweeps);
    program.scope.act([&] { program.dialog().controls().cmbHistogramOf.set_index(1); });
    // Points 100 and 101 of 313 ps, each hit once a sweep.
    const auto statistics = program.dialog().statistics();
    ASSERT_TRUE(statistics);
    EXPECT_DOUBLE_EQ(statistics->peak_to_peak, 313.0);
    EXPECT_DOUBLE_EQ(statistics->sigma, 156.5);
    EXPECT_EQ(program.shown()->bars, (std::vector<double>{1.0, 1.0}));
}

TEST(HistogramOfTheProgram, IsMovedAndResizedWithinThePlot) {
    WithHistogram program;
    HistogramDialog& dialog = program.dialog();
    program.scope.act([&] { dialog.set_window({100, 100, 200, 200}); });
    program.scope.act([&] {
        EXPECT_TRUE(dialog.press(150.0, 150.0));
        dialog.drag(160.0, 145.0);
        dialog.release();
    });
    EXPECT_EQ(dialog.window(), (PlotWindow{110, 95, 210, 195}));
    program.scope.act([&] {
        EXPECT_TRUE(dialog.press(210.0, 195.0)); // its lower right corner
        dialog.drag(230.0, 190.0);
        dialog.release();
        EXPECT_TRUE(dialog.press(110.0, 140.0)); // its left edge
        dialog.drag(500.0, 140.0);
        dialog.release();
    });
    EXPECT_EQ(dialog.window(), (PlotWindow{228, 95, 230, 190}));
    program.scope.act([&] {
        EXPECT_FALSE(dialog.press(300.0, 300.0)) << "beside it";
        dialog.nudge(1000, 1000);
    });
    EXPECT_EQ(dialog.window(), (PlotWindow{639, 418, 641, 513}));
    program.scope.act([&] { dialog.stretch(-1000, -1000); });
    EXPECT_EQ(dialog.window(), (PlotWindow{639, 418, 641, 420}));
    program.scope.act([&] { dialog.close(); });
    EXPECT_FALSE(dialog.press(640.0, 419.0)) << "it is closed";
}

} // namespace
} // namespace kv408
