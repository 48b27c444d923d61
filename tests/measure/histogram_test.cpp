#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "measure/measure_rig.h"

namespace kv408 {
namespace {

/// A rig whose sweep before went from 0 mV to 32 mV: bins of 1 mV, bin k over (k - 1, k] mV, and
/// 16 mV as the level between the histograms.
struct HistogramRig : MeasureRig {
    HistogramRig() {
        record()[meas::vmax] = 32.0;
        record()[meas::vmin] = 0.0;
        record()[meas::vpp] = 32.0;
    }

    /// Measures a sweep that has each value as often as it says, in this order, and 0 mV, which
    /// falls in no bin, everywhere else.
    void measure_values(const std::vector<std::pair<double, int>>& values) {
        std::vector<double> columns;
        for (const auto& [value, times] : values) {
            columns.insert(columns.end(), static_cast<std::size_t>(times), value);
        }
        sweep(ch1, [&columns](int column) {
            const auto index = static_cast<std::size_t>(column - 1);
            return column >= 1 && index < columns.size() ? columns[index] : 0.0;
        });
        measure();
    }
};

TEST(Histogram, TheFullestBinGivesTheMeanOfItsSamples) {
    HistogramRig rig;
    rig.measure_values({{25.25, 3}, {25.75, 1}, {30.5, 3}, {3.5, 2}, {3.75, 2}, {8.5, 3}});
    EXPECT_EQ(rig.record()[meas::top], 25.375);
    EXPECT_EQ(rig.record()[meas::base], 3.625);
    EXPECT_EQ(rig.record()[meas::amplitude], 21.75);
}

TEST(Histogram, OfEquallyFullBinsTheLowestWins) {
    HistogramRig rig;
    rig.measure_values({{30.5, 4}, {20.5, 4}, {25.5, 4}, {12.5, 3}, {2.5, 3}, {7.5, 3}});
    EXPECT_EQ(rig.record()[meas::top], 20.5);
    EXPECT_EQ(rig.record()[meas::base], 2.5);
}

TEST(Histogram, ABinHasItsUpperBoundButNotItsLower) {
    HistogramRig rig;
    // 21 belongs to bin 21 together with 20.5; 20 does not.
    rig.measure_values({{20.0, 1}, {20.5, 1}, {21.0, 1}, {5.0, 1}, {5.5, 1}, {6.0, 1}});
    EXPECT_EQ(rig.record()[meas::top], 20.75);
    EXPECT_EQ(rig.record()[meas::base], 5.75);
}

TEST(Histogram, TheMidLevelItselfBelongsToTheLowerOne) {
    HistogramRig rig;
    rig.measure_values({{16.0, 5}, {17.0, 1}});
    EXPECT_EQ(rig.record()[meas::base], 16.0);
    EXPECT_EQ(rig.record()[meas::top], 17.0);
}

TEST(Histogram, OneBinMayBeSplitByTheMidLevel) {
    HistogramRig rig;
    rig.record()[meas::vmax] = 31.0; // mid 15.5 mV, in the middle of bin 16
    rig.measure_values({{15.25, 2}, {15.75, 1}});
    EXPECT_EQ(rig.record()[meas::base], 15.25);
    EXPECT_EQ(rig.record()[meas::top], 15.75);
}

TEST(Histogram, ValuesAtTheBaseOrBeyondTheEndsFallInNoBin) {
    HistogramRig rig;
    rig.measure_values({{0.0, 100}, {-1.0, 100}, {32.0, 1}, {32.5, 100}, {0.5, 1}});
    EXPECT_EQ(rig.record()[meas::base], 0.5);
    EXPECT_EQ(rig.record()[meas::top], 32.0);
}

TEST(Histogram, WithoutAHitTheLevelsAreZero) {
    HistogramRig rig;
    rig.record()[meas::top] = 5.0;
    rig.record()[meas::base] = 5.0;
    rig.measure_values({{-7.0, 300}, {40.0, 300}});
    EXPECT_EQ(rig.record()[meas::top], 0.0);
    EXPECT_EQ(rig.record()[meas::base], 0.0);
    EXPECT_EQ(rig.record()[meas::amplitude], 0.0);
}

TEST(Histogram, ANoiseFreeSignalLosesItsLowerLevel) {
    // Its lowest samples are the base of the next sweep's histogram and fall in no bin.
    MeasureRig rig;
    rig.sweep(ch1, [](int column) { return column / 40 % 2 == 0 ? -50.0 : 50.0; });
    rig.measure(3);
    EXPECT_EQ(rig.record()[meas::vmin], -50.0);
    EXPECT_EQ(rig.record()[meas::base], 0.0);
    EXPECT_EQ(rig.record()[meas::top], 50.0);
}

TEST(Histogram, ANegativeOffsetDoesNotMatter) {
    MeasureRig rig;
    rig.sweep(ch1, [](int column) {
        return column == 1 ? -300.0 : column / 40 % 2 == 0 ? -290.0 : -110.0;
    });
    rig.measure(3);
    EXPECT_EQ(rig.record()[meas::base], -290.0);
    EXPECT_EQ(rig.record()[meas::top], -110.0);
    EXPECT_EQ(rig.record()[meas::amplitude], 180.0);
}

} // namespace
} // namespace kv408
