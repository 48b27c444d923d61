#include "measure/statistics.h"

#include <cmath>

#include <gtest/gtest.h>

#include "measure/value_trend.h"

namespace kv408 {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

TEST(RunningStatistics, AreThoseOfTheTextbook) {
    RunningStatistics values;
    EXPECT_EQ(values.count(), 0U);
    EXPECT_EQ(values.mean(), 0.0);
    EXPECT_EQ(values.deviation(), 0.0);
    values.add(-2.0);
    EXPECT_EQ(values.greatest(), -2.0);
    EXPECT_EQ(values.least(), -2.0);
    EXPECT_EQ(values.deviation(), 0.0);
    for (const double value : {4.0, 4.0, 4.0, 5.0, 5.0, 7.0, 9.0}) {
        values.add(value);
    }
    EXPECT_EQ(values.count(), 8U);
    EXPECT_DOUBLE_EQ(values.mean(), 4.5); // 36 / 8
    // Squared distances 42.25, three of 0.25, two of 0.25, 6.25 and 20.25 make 70.
    EXPECT_DOUBLE_EQ(values.deviation(), std::sqrt(10.0));
    EXPECT_EQ(values.least(), -2.0);
    EXPECT_EQ(values.greatest(), 9.0);
}

TEST(RunningStatistics, StayExactFarFromZero) {
    // Sums of squares would lose the spread of 1 beside 1e9.
    RunningStatistics values;
    for (int turn = 0; turn < 100000; ++turn) {
        values.add(1e9 - 1.0);
        values.add(1e9 + 1.0);
    }
    EXPECT_NEAR(values.mean(), 1e9, 1e-6);
    EXPECT_NEAR(values.deviation(), 1.0, 1e-5);
}

/// The index of the row of a field.
std::size_t row_of(std::size_t field) {
    std::size_t row = 0;
    while (measurement_rows()[row].field != field) {
        ++row;
    }
    return row;
}

/// Sweeps of both channels whose results are set by hand.
struct StatisticsRig {
    StatisticsRig() {
        for (std::size_t channel = 0; channel < 2; ++channel) {
            parts.at(channel).columns_per_second = 3.2e9;
            state.measresults.at(channel)[meas::rise] = -1.0;
        }
    }

    /// Takes a sweep as `parts` and `state` are.
    bool take() {
        Sweep sweep;
        sweep.came = came;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            sweep.channel.at(channel) = std::make_shared<const ChannelSweep>(parts.at(channel));
        }
        return statistics.take(sweep, state);
    }

    void settle() {
        for (int sweep = 0; sweep < Statistics::settling_sweeps; ++sweep) {
            EXPECT_FALSE(take());
        }
    }

    double& result(std::size_t channel, std::size_t field) {
        return state.measresults.at(channel)[field];
    }

    [[nodiscard]] const MeasurementStatistics& of(std::size_t channel, std::size_t field) const {
        return statistics.of(channel, row_of(field));
    }

    std::array<ChannelSweep, 2> parts;
    std::array<bool, 2> came = {true, true};
    MeasurementState state;
    Statistics statistics;
};

TEST(Statistics, AreInVoltsSecondsAndHertz) {
    StatisticsRig rig;
    rig.settle();
    rig.result(0, meas::vmax) = 250.0;
    rig.result(0, meas::pulse_high) = 96.0;
    rig.result(0, meas::pulse_low) = 64.0;
    rig.result(0, meas::period) = 160.0;
    rig.take();
    rig.result(0, meas::vmax) = 350.0;
    rig.take();
    EXPECT_EQ(rig.of(0, meas::vmax).present, (MeasuredValue{.value = 0.35}));
    EXPECT_DOUBLE_EQ(rig.of(0, meas::vmax).values.mean(), 0.3);
    EXPECT_EQ(rig.of(0, meas::vmax).values.count(), 2U);
    EXPECT_DOUBLE_EQ(rig.of(0, meas::pulse_high).values.mean(), 30e-9);
    EXPECT_DOUBLE_EQ(rig.of(0, meas::period).values.mean(), 50e-9);
    EXPECT_DOUBLE_EQ(rig.of(0, meas::frequency).values.mean(), 20e6);
    EXPECT_EQ(rig.of(1, meas::vmax).values.mean(), 0.0);
    EXPECT_EQ(rig.of(1, meas::frequency).values.count(), 0U);
}

TEST(Statistics, CountTheSweepsWithoutAValueByTheReason) {
    StatisticsRig rig;
    rig.settle();
    rig.result(0, meas::period) = 160.0; // of a sweep before
    rig.take();
    rig.result(0, meas::rise) = 0.0;
    rig.take();
    rig.take();
    const auto without = [&rig](std::size_t field, NoValue why) {
        return rig.of(0, field).without.at(static_cast<std::size_t>(why));
    };
    EXPECT_EQ(without(meas::rise, NoValue::no_edge), 1U);
    EXPECT_EQ(without(meas::rise, NoValue::too_steep), 2U);
    EXPECT_EQ(without(meas::frequency, NoValue::no_edge), 3U);
    EXPECT_EQ(without(meas::period, NoValue::no_edge), 3U);
    EXPECT_EQ(without(meas::pulse_low, NoValue::no_edge), 3U);
    EXPECT_EQ(without(meas::pulse_low, NoValue::too_steep), 0U);
    EXPECT_EQ(rig.of(0, meas::rise).values.count(), 0U);
    EXPECT_EQ(reason_text(NoValue::no_edge), "no edge on the screen");
    EXPECT_EQ(reason_text(NoValue::too_steep), "steeper than can be told");
}

TEST(Statistics, BeginAnewWithEachChangeOfTheSetUpOnceTheResultsHaveSettled) {
    const auto changes = {
        +[](StatisticsRig& rig) { rig.parts[0].time_per_point = 12.0; },
        +[](StatisticsRig& rig) { rig.parts[0].first_time = 12.0; },
        +[](StatisticsRig& rig) { rig.parts[1].columns_per_second = 6.4e9; },
        +[](StatisticsRig& rig) { rig.parts[1].mv_per_division = 20.0; },
        +[](StatisticsRig& rig) { rig.parts[0].conversion.inverted = true; },
        +[](StatisticsRig& rig) { rig.parts[0].gain = high_gain; },
        +[](StatisticsRig& rig) { rig.parts[0].averaged = true; },
        +[](StatisticsRig& rig) { rig.parts[1].trigger.level_mv = 3.0; },
        +[](StatisticsRig& rig) {
            rig.came = {true, false};
        },
    };
    for (const auto& change : changes) {
        StatisticsRig rig;
        rig.settle();
        rig.take();
        rig.parts[0].position = 2.0; // moves the trace alone
        rig.take();
        EXPECT_EQ(rig.of(0, meas::vmax).values.count(), 2U);
        change(rig);
        rig.settle();
        EXPECT_EQ(rig.of(0, meas::vmax).values.count(), 0U);
        rig.take();
        EXPECT_EQ(rig.of(0, meas::vmax).values.count(), 1U);
        EXPECT_EQ(rig.of(1, meas::vmax).present.has_value(), rig.came[1]);
    }
}

TEST(Statistics, AResetBeginsAtTheNextSweepAndKeepsTheLimits) {
    StatisticsRig rig;
    rig.settle();
    rig.statistics.set_limits(0, row_of(meas::vmax), {.least = {}, .greatest = 0.3});
    rig.take();
    rig.statistics.reset();
    EXPECT_EQ(rig.of(0, meas::vmax).values.count(), 0U);
    EXPECT_FALSE(rig.of(0, meas::vmax).present);
    rig.result(0, meas::vmax) = 400.0;
    EXPECT_TRUE(rig.take());
    EXPECT_EQ(rig.of(0, meas::vmax).values.count(), 1U);
    EXPECT_EQ(rig.of(0, meas::vmax).outside, 1U);
}

TEST(Statistics, TellAndCountWhatLiesOutsideItsLimits) {
    StatisticsRig rig;
    rig.settle();
    rig.statistics.set_limits(1, row_of(meas::vmean), {.least = -0.1, .greatest = 0.1});
    for (const auto& [millivolts, outside] :
         {std::pair{-101.0, true}, {-100.0, false}, {100.0, false}, {101.0, true}}) {
        rig.result(1, meas::vmean) = millivolts;
        EXPECT_EQ(rig.take(), outside) << millivolts;
    }
    EXPECT_EQ(rig.of(1, meas::vmean).outside, 2U);
    EXPECT_EQ(rig.of(0, meas::vmean).outside, 0U);
    rig.statistics.set_limits(1, row_of(meas::vmean), {.least = 0.2, .greatest = {}});
    EXPECT_EQ(rig.of(1, meas::vmean).outside, 0U);
    EXPECT_TRUE(rig.take());
}

TEST(ValueTrend, GoesBackOverTheLastMinutes) {
    ValueTrend trend;
    trend.add(seconds(0), 1.0);
    trend.add(seconds(1), 2.0);
    trend.add(minutes(5), 3.0);
    EXPECT_EQ(trend.points().size(), 3U);
    trend.add(minutes(5) + seconds(1), 4.0);
    ASSERT_EQ(trend.points().size(), 3U);
    EXPECT_EQ(trend.points().front().value, 2.0);
    for (std::size_t point = 0; point < 2 * ValueTrend::most_points; ++point) {
        trend.add(minutes(6), 5.0);
    }
    EXPECT_EQ(trend.points().size(), ValueTrend::most_points);
}

TEST(ValueTrend, HasAHistogram) {
    ValueTrend trend;
    EXPECT_TRUE(trend.histogram(4).count.empty());
    trend.add(seconds(0), 2.0);
    trend.add(seconds(0), 2.0);
    EXPECT_EQ(trend.histogram(4).count, (std::vector<std::uint32_t>{2}));
    for (const double value : {4.0, 2.4, 2.5, 3.4}) {
        trend.add(seconds(1), value);
    }
    const Histogram histogram = trend.histogram(4);
    EXPECT_EQ(histogram.least, 2.0);
    EXPECT_EQ(histogram.width, 0.5);
    EXPECT_EQ(histogram.count, (std::vector<std::uint32_t>{3, 1, 1, 1}));
}

} // namespace
} // namespace kv408
