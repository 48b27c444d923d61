#include "analysis/crossing_times.h"

#include <gtest/gtest.h>

#include "synthetic.h"

namespace kv408 {
namespace {

/// What is known of a made-up edge.
struct Edge {
    double jitter_ps = 0.0;
    double noise_mv = 0.0;
    double length_ps = 2000.0;
    bool falls = false;
    bool inverted = false;
    int sweeps = 400;
};

/// An edge between -200 and 200 mV in the middle of the screen, at 4200 ps.
Collected swept(const Edge& edge) {
    synthetic::Chance chance(7);
    Collected sweeps = synthetic::nothing(edge.inverted);
    synthetic::count(sweeps, edge.sweeps, [&](double time) {
        const double late = edge.jitter_ps * chance.normal();
        const double rise = synthetic::edge(time - 4200.0 - late, edge.length_ps);
        return (edge.falls ? 200.0 - 400.0 * rise : 400.0 * rise - 200.0) +
               edge.noise_mv * chance.normal();
    });
    return sweeps;
}

Told<CrossingTimes> measured(const Collected& sweeps, double level = 0.0) {
    const auto levels = two_levels(sweeps);
    if (!levels) {
        return levels.why();
    }
    const auto crossings = crossings_of(sweeps, *levels, level);
    if (!crossings) {
        return crossings.why();
    }
    return edge_times(sweeps, *levels, level, crossings->places.front(), 0.0);
}

TEST(TwoLevels, AreThoseWhereTheTraceRests) {
    const auto levels = two_levels(swept({.jitter_ps = 10.0, .noise_mv = 3.0}));
    ASSERT_TRUE(levels);
    EXPECT_NEAR(levels->zero, -200.0, 1.0);
    EXPECT_NEAR(levels->one, 200.0, 1.0);
    EXPECT_FALSE(levels->clipped);
}

TEST(TwoLevels, NoneOfAFlatLineAndOfNothing) {
    synthetic::Chance chance(1);
    Collected sweeps = synthetic::nothing();
    EXPECT_EQ(two_levels(sweeps).why(), WhyNot::no_hits);
    synthetic::count(sweeps, 1, [](double) { return 30.0; });
    EXPECT_EQ(two_levels(sweeps).why(), WhyNot::flat);
    synthetic::count(sweeps, 300, [&](double) { return 30.0 + 10.0 * chance.normal(); });
    EXPECT_EQ(two_levels(sweeps).why(), WhyNot::flat);
}

TEST(Crossings, AreFoundOnBothEdgesOfAPulse) {
    Collected sweeps = synthetic::nothing();
    synthetic::count(sweeps, 3, [](double time) {
        return 300.0 * synthetic::edge(time - 2000.0, 500.0) -
               300.0 * synthetic::edge(time - 6000.0, 500.0);
    });
    const auto levels = two_levels(sweeps);
    ASSERT_TRUE(levels);
    const auto found = crossings_of(sweeps, *levels, 150.0);
    ASSERT_TRUE(found);
    ASSERT_EQ(found->places.size(), 2U);
    EXPECT_EQ(found->places[0].way, Crosses::rising);
    EXPECT_NEAR(found->places[0].point, 100.0, 0.6);
    EXPECT_EQ(found->places[0].end_point, 300);
    EXPECT_EQ(found->places[1].way, Crosses::falling);
    EXPECT_NEAR(found->places[1].point, 500.0, 0.6);
    EXPECT_EQ(found->places[1].first_point, 300);
    EXPECT_FALSE(found->interval);
    EXPECT_EQ(crossings_of(sweeps, *levels, 320.0).why(), WhyNot::no_crossing);
}

TEST(EdgeTimes, JitterWithoutNoiseIsItsDeviation) {
    for (const double jitter : {2.0, 10.0, 100.0, 300.0}) {
        const auto found = measured(swept({.jitter_ps = jitter}));
        ASSERT_TRUE(found);
        EXPECT_NEAR(found->sigma, jitter, 0.02 * jitter);
        EXPECT_NEAR(found->mean, 4200.0, 0.05 * jitter + 0.2);
        // Ten thousand hits, which lie 73 ps from the middle in the mean, and the arc's bend.
        const double slope = 200.0 * std::numbers::pi / 2000.0;
        EXPECT_NEAR(found->slope, slope, slope * (0.008 + 3.0 * jitter / 73.0 / 100.0));
        const auto times = statistics_of(found->times);
        ASSERT_TRUE(times);
        EXPECT_NEAR(times->sigma, jitter, 0.02 * jitter);
        EXPECT_NEAR(times->mean, found->mean, 0.02 * jitter);
        EXPECT_NEAR(times->hits, found->hits, 0.01);
    }
}

TEST(EdgeTimes, NoiseCountsByTheSlope) {
    const auto found = measured(swept({.jitter_ps = 20.0, .noise_mv = 8.0}));
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->sigma, std::hypot(20.0, 8.0 / (200.0 * std::numbers::pi / 2000.0)), 0.7);
}

TEST(EdgeTimes, FallingEdgesAndInvertedChannelsAreMeasuredAlike) {
    for (const bool falls : {false, true}) {
        for (const bool inverted : {false, true}) {
            const auto found =
                measured(swept({.jitter_ps = 40.0, .falls = falls, .inverted = inverted}), 50.0);
            ASSERT_TRUE(found);
            EXPECT_NEAR(found->sigma, 40.0, 0.8);
            // A quarter of the way from the middle: asin(1/4) of the raised cosine.
            const double later = 2000.0 / std::numbers::pi * std::asin(0.25);
            EXPECT_NEAR(found->mean, 4200.0 + (falls ? -later : later), 2.0);
        }
    }
}

TEST(EdgeTimes, AnEdgeThatPassesBetweenTwoPointsCannotBeMeasured) {
    EXPECT_EQ(measured(swept({.length_ps = 4.0})).why(), WhyNot::points_apart);
}

TEST(EdgeTimes, OneSweepIsTooFewHits) {
    EXPECT_EQ(measured(swept({.length_ps = 100.0, .sweeps = 1})).why(), WhyNot::few_hits);
}

} // namespace
} // namespace kv408
