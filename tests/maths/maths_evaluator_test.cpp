#include "maths/maths_evaluator.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

using TraceLevels = std::vector<double>;

/// A channel's points in millivolts, 20 ps apart.
ChannelSweep points_of(TraceLevels mv) {
    ChannelSweep part;
    part.whole = true;
    part.time_per_point = 20.0;
    part.columns_per_second = 50e9;
    part.mv = std::move(mv);
    return part;
}

/// A sweep of both channels, or of CH1 alone.
Sweep sweep_with(const ChannelSweep& one, const ChannelSweep* two = nullptr) {
    Sweep sweep;
    sweep.number = 5;
    sweep.complete = true;
    sweep.came = {true, two != nullptr};
    sweep.channel = {std::make_shared<const ChannelSweep>(one),
                     std::make_shared<const ChannelSweep>(two == nullptr ? ChannelSweep() : *two)};
    return sweep;
}

MathsEvaluator computing(MathsFunction function, Channel a = ch1, Channel b = ch2) {
    MathsEvaluator maths;
    maths.define({function, a, b});
    return maths;
}

/// What `function` makes of CH1 and CH2.
TraceLevels result_of(MathsFunction function, const TraceLevels& one, const TraceLevels& two) {
    MathsEvaluator maths = computing(function);
    const ChannelSweep second = points_of(two);
    maths.take(sweep_with(points_of(one), &second));
    return maths.trace()->values;
}

TEST(MathsEvaluation, ComputesInBaseUnits) {
    const TraceLevels one = {1000.0, -500.0, 2000.0};
    const TraceLevels two = {250.0, 500.0, -4000.0};
    EXPECT_EQ(result_of(MathsFunction::sum, one, two), (TraceLevels{1.25, 0.0, -2.0}));
    EXPECT_EQ(result_of(MathsFunction::difference, one, two), (TraceLevels{0.75, -1.0, 6.0}));
    EXPECT_EQ(result_of(MathsFunction::product, one, two), (TraceLevels{0.25, -0.25, -8.0}));
    EXPECT_EQ(result_of(MathsFunction::negative, one, two), (TraceLevels{-1.0, 0.5, -2.0}));
    const TraceLevels slopes = result_of(MathsFunction::derivative, one, two);
    ASSERT_EQ(slopes.size(), 3U);
    EXPECT_DOUBLE_EQ(slopes[0], -1.5 / 20e-12);
    EXPECT_DOUBLE_EQ(slopes[1], 1.0 / 40e-12);
    EXPECT_DOUBLE_EQ(slopes[2], 2.5 / 20e-12);
    const TraceLevels sums = result_of(MathsFunction::integral, one, two);
    EXPECT_EQ(sums[0], 0.0);
    EXPECT_DOUBLE_EQ(sums[1], 0.25 * 20e-12);
    EXPECT_DOUBLE_EQ(sums[2], 1.0 * 20e-12);
}

TEST(MathsEvaluation, CallsThingsByTheirNames) {
    const auto called = [](MathsFunction function, Channel a, Channel b) {
        const MathsDefinition definition{function, a, b};
        return definition.label() + " in " + std::string(unit_name(definition.unit()));
    };
    EXPECT_EQ(called(MathsFunction::difference, ch2, ch1), "CH2 - CH1 in V");
    EXPECT_EQ(called(MathsFunction::product, ch1, ch1), "CH1 x CH1 in V^2");
    EXPECT_EQ(called(MathsFunction::derivative, ch2, ch1), "dCH2/dt in V/s");
    EXPECT_EQ(called(MathsFunction::integral, ch1, ch2), "Integral of CH1 in Vs");
    EXPECT_EQ(called(MathsFunction::envelope, ch1, ch2), "Envelope of CH1 in V");
}

TEST(MathsEvaluation, KnowsWhereItLiesAndOfWhichSweepItIs) {
    MathsEvaluator maths = computing(MathsFunction::difference);
    ChannelSweep two = points_of({0.0, 10.0, 20.0});
    two.first_time = 30.0; // points at 30, 50 and 70 ps, those of CH1 at 0, 20, 40, 60 and 80
    maths.take(sweep_with(points_of({0.0, 0.0, 0.0, 0.0, 0.0}), &two));
    ASSERT_NE(maths.trace(), nullptr);
    EXPECT_EQ(maths.trace()->first_time, 40.0);
    EXPECT_EQ(maths.trace()->first_point, 2U);
    EXPECT_EQ(maths.trace()->time_per_point, 20.0);
    EXPECT_EQ(maths.trace()->sweep, 5U);
    EXPECT_EQ(maths.trace()->values, (TraceLevels{-0.005, -0.015}));
    two.first_time = 100.0;
    maths.take(sweep_with(points_of({0.0, 0.0, 0.0, 0.0, 0.0}), &two));
    EXPECT_EQ(maths.trace(), nullptr);
    EXPECT_EQ(maths.reason(),
              "The channels have no time in common: their delays lie too far apart");
}

TEST(MathsEvaluation, SaysWhyThereIsNothing) {
    MathsEvaluator maths;
    maths.take(sweep_with(points_of({1.0})));
    EXPECT_EQ(maths.trace(), nullptr);
    EXPECT_EQ(maths.reason(), "Off");
    maths.define({MathsFunction::sum, ch1, ch2});
    EXPECT_EQ(maths.reason(), "No whole sweep has come yet");
    maths.take(sweep_with(points_of({1.0})));
    EXPECT_EQ(maths.trace(), nullptr);
    EXPECT_EQ(maths.reason(), "CH2 is not in the last sweep");
    maths.define({MathsFunction::negative, ch1, ch2}); // CH2 does not count
    maths.take(sweep_with(points_of({1.0})));
    EXPECT_EQ(maths.trace()->values, TraceLevels{-0.001});
    EXPECT_EQ(maths.reason(), "");
    maths.define({MathsFunction::derivative, ch1, ch2});
    maths.take(sweep_with(points_of({1.0})));
    EXPECT_EQ(maths.reason(), "A derivative needs two points");
    ChannelSweep broken = points_of({1.0, 2.0});
    broken.whole = false;
    maths.take(sweep_with(broken));
    EXPECT_EQ(maths.reason(), "CH1 is not in the last sweep");
}

TEST(MathsOfSweeps, MeanAndEnvelopeAreOfTheLastOnes) {
    MathsEvaluator mean = computing(MathsFunction::mean);
    MathsEvaluator envelope = computing(MathsFunction::envelope);
    for (MathsEvaluator* const maths : {&mean, &envelope}) {
        maths->set_kept(3);
        for (const double level : {900.0, 2000.0, -1000.0, 5000.0}) {
            maths->take(sweep_with(points_of({level, -level})));
        }
    }
    EXPECT_EQ(mean.trace()->values, (TraceLevels{2.0, -2.0}));
    EXPECT_EQ(mean.trace()->sweeps, 3U);
    EXPECT_TRUE(mean.trace()->lowest.empty());
    EXPECT_EQ(envelope.trace()->values, (TraceLevels{5.0, 1.0}));
    EXPECT_EQ(envelope.trace()->lowest, (TraceLevels{-1.0, -5.0}));
    mean.set_kept(2); // the last two at once
    EXPECT_EQ(mean.trace()->values, (TraceLevels{2.0, -2.0}));
    envelope.set_kept(1);
    EXPECT_EQ(envelope.trace()->values, (TraceLevels{5.0, -5.0}));
    EXPECT_EQ(envelope.trace()->lowest, (TraceLevels{5.0, -5.0}));
    EXPECT_EQ(envelope.trace()->sweeps, 1U);
    mean.clear();
    EXPECT_EQ(mean.trace(), nullptr);
    mean.take(sweep_with(points_of({3000.0})));
    EXPECT_EQ(mean.trace()->values, TraceLevels{3.0});
}

TEST(MathsOfSweeps, BeginAnewWithASweepThatWasTakenOtherwise) {
    const std::vector<void (*)(Sweep&, ChannelSweep&)> changes = {
        [](Sweep&, ChannelSweep& part) { part.time_per_point = 40.0; },
        [](Sweep&, ChannelSweep& part) { part.first_time = 7.0; },
        [](Sweep&, ChannelSweep& part) { part.gain = low_gain; },
        [](Sweep&, ChannelSweep& part) { part.conversion.inverted = true; },
        [](Sweep&, ChannelSweep& part) { part.conversion.swoffset = 3; },
        [](Sweep&, ChannelSweep& part) { part.trigger.level_mv = 3.0; },
        [](Sweep&, ChannelSweep& part) { part.averaged = true; },
        [](Sweep&, ChannelSweep& part) { part.mv.push_back(0.0); },
        [](Sweep& sweep, ChannelSweep&) { sweep.mode = SweepMode::point; },
    };
    for (std::size_t change = 0; change < changes.size(); ++change) {
        MathsEvaluator maths = computing(MathsFunction::mean);
        maths.take(sweep_with(points_of({1000.0, 1000.0})));
        Sweep other = sweep_with(points_of({3000.0, 3000.0}));
        ChannelSweep part = *other.channel[ch1];
        changes[change](other, part);
        other.channel[ch1] = std::make_shared<const ChannelSweep>(part);
        maths.take(other);
        EXPECT_EQ(maths.trace()->values.front(), 3.0) << change;
        EXPECT_EQ(maths.trace()->sweeps, 1U) << change;
    }
    // V/div within a range, and where the zero line lies, change nothing of the points.
    MathsEvaluator maths = computing(MathsFunction::mean);
    maths.take(sweep_with(points_of({1000.0})));
    ChannelSweep moved = points_of({3000.0});
    moved.position = 2.0;
    moved.mv_per_division = 10.0;
    maths.take(sweep_with(moved));
    EXPECT_EQ(maths.trace()->values, TraceLevels{2.0});
}

TEST(MathsColumns, AreTheLastPointsUpToTheirTimes) {
    MathsTrace trace;
    trace.time_per_point = 4.0;
    trace.columns_per_second = 320e9; // 1.28 columns per point
    for (int point = 0; point < 650; ++point) {
        trace.values.push_back(point);
    }
    const auto columns = screen_columns(trace);
    ASSERT_EQ(columns.size(), 640U);
    EXPECT_EQ(std::vector<double>(columns.begin(), columns.begin() + 6),
              (TraceLevels{0.0, 0.0, 1.0, 2.0, 3.0, 3.0})); // 0, 0.78, 1.56, 2.34, 3.125, 3.9
    EXPECT_EQ(columns.back(), 499.0);                       // 639 / 1.28 = 499.2
    // Begins at A's point 3, and has two of them.
    trace.first_point = 3;
    trace.values = {10.0, 11.0};
    EXPECT_EQ(screen_columns(trace), (TraceLevels{10.0, 10.0, 11.0}));
    trace.values.clear();
    EXPECT_TRUE(screen_columns(trace).empty());
}

} // namespace
} // namespace kv408
