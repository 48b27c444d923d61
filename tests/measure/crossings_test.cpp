#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "measure/measure_rig.h"

namespace kv408 {
namespace {

/// A channel whose sweep before had -100 mV .. 100 mV with these levels as base and top: mid 0 mV,
/// 10 % at -80 mV, 90 % at 80 mV.
MeasurementRecord settled() {
    MeasurementRecord record = {};
    record[meas::vmax] = 100.0;
    record[meas::vmin] = -100.0;
    record[meas::vpp] = 200.0;
    record[meas::top] = 100.0;
    record[meas::base] = -100.0;
    return record;
}

/// What a pass finds over `columns`, which begin at column 1; the last value goes on to the end.
SweepFindings pass_over_columns(const std::vector<double>& columns) {
    SampleBuffer samples;
    for (std::size_t column = 1; column < samples.mv.size(); ++column) {
        samples.mv[column] = column <= columns.size() ? columns[column - 1] : columns.back();
    }
    return pass_over(samples, settled());
}

using Found = std::vector<double>;

Found found(std::span<const double> positions) {
    return {positions.begin(), positions.end()};
}

/// A wave that is low and high for `half` columns each, low first, straight from one to the other.
std::vector<double> square(int half, double low = -100.0, double high = 100.0) {
    std::vector<double> columns(measured_columns);
    for (int column = 0; column < measured_columns; ++column) {
        columns[static_cast<std::size_t>(column)] = column / half % 2 == 0 ? low : high;
    }
    return columns;
}

TEST(Crossings, RisingOnesArePositiveFallingOnesNegative) {
    const auto pass = pass_over_columns({-100, 100, 100, -100, -100});
    EXPECT_EQ(found(pass.crossings.found()), (Found{1.5, -3.5}));
}

TEST(Crossings, LieWhereTheStraightLineMeetsTheMidLevel) {
    const auto pass = pass_over_columns({-100, -25, 75, 100, 30, -90});
    EXPECT_EQ(found(pass.crossings.found()), (Found{2.25, -5.25}));
}

TEST(Crossings, AFallMayLeaveTheMidLevelButMustGoBelowIt) {
    // At the mid level and down: a falling crossing at the column of the mid level itself.
    EXPECT_EQ(found(pass_over_columns({0, -90, -90}).crossings.found()), (Found{-1.0}));
    // Down to the mid level is none yet; further down is.
    EXPECT_EQ(found(pass_over_columns({90, 0, 0, 0}).crossings.found()), Found{});
    EXPECT_EQ(found(pass_over_columns({90, 0, -90, -90}).crossings.found()), (Found{-2.0}));
}

TEST(Crossings, ARiseMayLeaveTheMidLevelButMustGoAboveIt) {
    EXPECT_EQ(found(pass_over_columns({0, 90, 90}).crossings.found()), (Found{1.0}));
    EXPECT_EQ(found(pass_over_columns({-90, 0, 0, 0}).crossings.found()), Found{});
    EXPECT_EQ(found(pass_over_columns({-90, 0, 90, 90}).crossings.found()), (Found{2.0}));
}

TEST(Crossings, TheNextOneNeedsTheSignalToHaveReachedItsLevel) {
    // Up to 50 mV only, below the 90 % of 80 mV: coming down again is no crossing, nor the next
    // rise. After 90 mV it is.
    const auto pass = pass_over_columns({-90, 50, -50, 50, 90, -50, -50});
    EXPECT_EQ(found(pass.crossings.found()), (Found{1.0 + 90.0 / 140.0, -(5.0 + 90.0 / 140.0)}));
}

TEST(Crossings, ReachingTheLevelExactlyIsNotEnough) {
    EXPECT_EQ(pass_over_columns({-90, 90, 80, -90}).crossings.count(), 1U);
    EXPECT_EQ(pass_over_columns({-90, 80, 80, -90}).crossings.count(), 1U);
    EXPECT_EQ(pass_over_columns({-90, 10, 81, -90}).crossings.count(), 2U);
    EXPECT_EQ(pass_over_columns({90, -10, -80, 90}).crossings.count(), 1U);
    EXPECT_EQ(pass_over_columns({90, -10, -81, 90}).crossings.count(), 2U);
}

TEST(Crossings, TheColumnOfACrossingDoesNotArmTheNext) {
    // The column that crosses lies beyond 90 % itself, but arming is looked at before crossing:
    // only a later column beyond it arms.
    EXPECT_EQ(found(pass_over_columns({-100, 100, -100, -100}).crossings.found()), (Found{1.5}));
    EXPECT_EQ(found(pass_over_columns({-100, 100, 100, -100}).crossings.found()),
              (Found{1.5, -3.5}));
}

TEST(Crossings, ArmingAndCrossingMayFallOnOneColumn) {
    // After a rising crossing the state is armed by v > high and the falling test comes next, in
    // the same column; it needs v below mid, so both cannot meet unless high lies below mid.
    MeasurementRecord previous = settled();
    previous[meas::top] = -60.0;
    previous[meas::base] = -80.0; // 90 % at -62 mV, below the mid level of 0 mV
    SampleBuffer samples;
    samples.mv.fill(-50.0);
    samples.mv[1] = -90.0;
    samples.mv[2] = 10.0;
    const auto pass = pass_over(samples, previous);
    // Column 3 is at -50 mV: above 90 %, so it arms, and below mid, so it crosses falling.
    EXPECT_EQ(found(pass.crossings.found()), (Found{1.9, -(2.0 + 10.0 / 60.0)}));
}

TEST(Crossings, TheFirstColumnIsComparedWithNothing) {
    SampleBuffer samples;
    samples.mv.fill(100.0);
    samples.mv[0] = -100.0;
    const auto pass = pass_over(samples, settled());
    EXPECT_EQ(pass.crossings.count(), 0U);
    EXPECT_EQ(pass.rises.count(), 0U);
}

TEST(Crossings, SeventeenAreNotedAtMost) {
    const auto pass = pass_over_columns(square(20)); // 31 edges, the first at 20.5
    Found expected;
    for (int edge = 1; edge <= 17; ++edge) {
        expected.push_back((edge % 2 == 1 ? 1.0 : -1.0) * (20.0 * edge + 0.5));
    }
    EXPECT_EQ(found(pass.crossings.found()), expected);
}

TEST(Edges, EightRisesAndEightFallsAreNotedAtMost) {
    const auto pass = pass_over_columns(square(20));
    Found rises;
    Found falls;
    for (int edge = 0; edge < 8; ++edge) {
        const double before = 20.0 + 40.0 * edge;
        rises.insert(rises.end(), {before + 20.0 / 200.0, before + 180.0 / 200.0});
        falls.insert(falls.end(), {before + 20.0 + 20.0 / 200.0, before + 20.0 + 180.0 / 200.0});
    }
    ASSERT_EQ(pass.rises.count(), 16U);
    ASSERT_EQ(pass.falls.count(), 16U);
    for (std::size_t end = 0; end < 16; ++end) {
        EXPECT_DOUBLE_EQ(pass.rises[end], rises[end]) << end;
        EXPECT_DOUBLE_EQ(pass.falls[end], falls[end]) << end;
    }
}

TEST(Edges, ARiseGoesFromTheLastLowCrossingToTheHighOne) {
    // 10 % is passed upwards at column 1, back, and again between 3 and 4; 90 % between 5 and 6.
    const auto pass = pass_over_columns({-80, -60, -90, -70, 0, 100, 100});
    ASSERT_EQ(pass.rises.count(), 2U);
    EXPECT_DOUBLE_EQ(pass.rises[0], 3.5);
    EXPECT_DOUBLE_EQ(pass.rises[1], 5.8);
    EXPECT_EQ(pass.falls.count(), 0U);
}

TEST(Edges, AFallGoesFromTheLastHighCrossingToTheLowOne) {
    const auto pass = pass_over_columns({80, 60, 90, 70, 0, -100, -100});
    ASSERT_EQ(pass.falls.count(), 2U);
    EXPECT_DOUBLE_EQ(pass.falls[0], 3.5);
    EXPECT_DOUBLE_EQ(pass.falls[1], 5.8);
    EXPECT_EQ(pass.rises.count(), 0U);
}

TEST(Edges, BothEndsMayLieBetweenTheSameTwoColumns) {
    const auto pass = pass_over_columns({-100, 100, -100});
    ASSERT_EQ(pass.rises.count(), 2U);
    EXPECT_DOUBLE_EQ(pass.rises[0], 1.1);
    EXPECT_DOUBLE_EQ(pass.rises[1], 1.9);
    ASSERT_EQ(pass.falls.count(), 2U);
    EXPECT_DOUBLE_EQ(pass.falls[0], 2.1);
    EXPECT_DOUBLE_EQ(pass.falls[1], 2.9);
}

TEST(Edges, StandingOnALevelIsBeforeIt) {
    // From exactly 10 % to exactly 90 % is armed, but complete only above 90 %.
    EXPECT_EQ(pass_over_columns({-80, 80, 80}).rises.count(), 0U);
    const auto rise = pass_over_columns({-80, 80, 90, 90});
    ASSERT_EQ(rise.rises.count(), 2U);
    EXPECT_EQ(rise.rises[0], 1.0);
    EXPECT_EQ(rise.rises[1], 2.0);
    EXPECT_EQ(pass_over_columns({80, -80, -80}).falls.count(), 0U);
    EXPECT_EQ(pass_over_columns({80, -80, -90, -90}).falls.count(), 2U);
    // Coming to 10 % from above is no beginning of a rise; leaving it upwards is.
    EXPECT_EQ(pass_over_columns({-79, 0, 79, 90}).rises.count(), 0U);
}

TEST(Edges, OnceArmedARiseMayTakeAnyTimeAndDips) {
    const auto pass = pass_over_columns({-100, 0, -70, 0, -75, 0, 100});
    ASSERT_EQ(pass.rises.count(), 2U);
    EXPECT_DOUBLE_EQ(pass.rises[0], 1.2);
    EXPECT_DOUBLE_EQ(pass.rises[1], 6.8);
}

TEST(Edges, CompletedEdgesMustBeArmedAgain) {
    // Dips to 0 mV and back pass 90 % but not 10 %.
    const auto pass = pass_over_columns({-100, 100, 0, 100, 0, 100});
    EXPECT_EQ(pass.rises.count(), 2U);
    EXPECT_EQ(pass.falls.count(), 0U);
}

TEST(Edges, WithThresholdsThatCoincideTheyTakeNoTime) {
    SampleBuffer samples;
    samples.mv.fill(50.0);
    samples.mv[1] = -50.0;
    const auto pass = pass_over(samples, {}); // the first sweep: all levels are 0 mV
    ASSERT_EQ(pass.rises.count(), 2U);
    EXPECT_EQ(pass.rises[0], 1.5);
    EXPECT_EQ(pass.rises[1], 1.5);
}

TEST(Pass, AFlatTraceHasNoEdges) {
    const auto pass = pass_over_columns({0.0});
    EXPECT_EQ(pass.crossings.count(), 0U);
    EXPECT_EQ(pass.rises.count(), 0U);
    EXPECT_EQ(pass.falls.count(), 0U);
    EXPECT_EQ(pass.maximum, 0.0);
    EXPECT_EQ(pass.minimum, 0.0);
}

TEST(Pass, GoesToColumn640) {
    std::vector<double> columns(640, -100.0);
    columns[639] = 100.0;
    EXPECT_EQ(found(pass_over_columns(columns).crossings.found()), (Found{639.5}));
}

} // namespace
} // namespace kv408
