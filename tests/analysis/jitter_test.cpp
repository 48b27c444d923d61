#include "analysis/jitter.h"

#include <gtest/gtest.h>

#include "synthetic.h"

namespace kv408 {
namespace {

/// A clock of 2000 ps, of which half is high, that rises at 1800 ps, with jitter and noise.
Collected clock_of(double jitter_ps, double noise_mv, int sweeps = 500) {
    synthetic::Chance chance(5);
    Collected all = synthetic::nothing();
    synthetic::count(all, sweeps, [&](double time) {
        const double at = time - jitter_ps * chance.normal();
        double level = -200.0;
        for (double rise = -200.0; rise < 9000.0; rise += 2000.0) {
            level += 400.0 * (synthetic::edge(at - rise, 600.0) -
                              synthetic::edge(at - rise - 1000.0, 600.0));
        }
        return level + noise_mv * chance.normal();
    });
    return all;
}

constexpr double slope = 200.0 * std::numbers::pi / 600.0;

TEST(Jitter, NoiseOverSlopeAndTheInstrumentsJitterAreTakenOff) {
    const Collected all = clock_of(20.0, 10.0);
    const auto found = jitter_of(all, {});
    ASSERT_TRUE(found) << text_of(found.why());
    ASSERT_TRUE(found->noise);
    EXPECT_NEAR(*found->noise, 10.0, 0.2);
    EXPECT_NEAR(found->taken_off, 10.0 / slope, 0.3);
    EXPECT_NEAR(found->times.sigma, std::hypot(20.0, 10.0 / slope), 0.5);
    ASSERT_TRUE(found->rms);
    EXPECT_NEAR(*found->rms, 20.0, 0.5);
    const auto less = jitter_of(all, {.instrument_ps = 15.0});
    ASSERT_TRUE(less);
    ASSERT_TRUE(less->rms);
    EXPECT_NEAR(*less->rms, std::sqrt(400.0 - 225.0), 0.8);
    const auto nothing_left = jitter_of(all, {.instrument_ps = 40.0});
    ASSERT_TRUE(nothing_left);
    EXPECT_FALSE(nothing_left->rms);
    EXPECT_EQ(nothing_left->rms.why(), WhyNot::only_noise);
    EXPECT_FALSE(nothing_left->parts);
}

TEST(Jitter, IsThatOfTheEdgeThatWasChosen) {
    const Collected all = clock_of(20.0, 2.0);
    const auto mean = [&](const JitterSetup& setup) {
        const auto found = jitter_of(all, setup);
        return found ? found->times.mean : -1.0;
    };
    EXPECT_NEAR(mean({}), 3800.0, 3.0); // 4195 ps is the middle of the screen
    EXPECT_NEAR(mean({.way = Crosses::falling}), 4800.0, 3.0);
    EXPECT_NEAR(mean({.way = Crosses::rising, .number = 1}), 1800.0, 3.0);
    EXPECT_NEAR(mean({.way = Crosses::falling, .number = 2}), 4800.0, 3.0);
    EXPECT_NEAR(mean({.number = 2}), 2800.0, 3.0);
    EXPECT_EQ(jitter_of(all, {.number = 9}).why(), WhyNot::no_crossing);
    EXPECT_EQ(jitter_of(all, {.number = 0}).why(), WhyNot::no_crossing);
    EXPECT_EQ(jitter_of(all, {.level = 300.0}).why(), WhyNot::no_crossing);
    EXPECT_EQ(jitter_of(all, {.level = 190.0}).why(), WhyNot::no_crossing);
}

TEST(Jitter, TellsItsPartsAndTheBathtubOfAClock) {
    const auto found = jitter_of(clock_of(50.0, 2.0, 2000), {});
    ASSERT_TRUE(found) << text_of(found.why());
    EXPECT_GT(found->peak_to_peak, 5.0 * 50.0);
    EXPECT_LT(found->peak_to_peak, 11.0 * 50.0);
    ASSERT_TRUE(found->parts);
    EXPECT_NEAR(found->parts->total(told_error_ratio), 14.069 * 50.0, 70.0);
    ASSERT_TRUE(found->interval);
    EXPECT_NEAR(*found->interval, 2000.0, 4.0);
    EXPECT_NEAR(found->sweeps_wanted, 2000.0 * 5000.0 / found->times.hits, 1e-6);
    const auto curve = bathtub(*found, 100);
    ASSERT_TRUE(curve);
    ASSERT_EQ(curve->size(), 101U);
    EXPECT_NEAR(curve->front(), 0.5, 0.08);
    EXPECT_LT((*curve)[50], 1e-12);
    EXPECT_NEAR(curve->back(), 0.5, 0.08);
}

TEST(Jitter, OfTooFewHitsHasNoParts) {
    const auto found = jitter_of(clock_of(50.0, 2.0, 12), {});
    ASSERT_TRUE(found) << text_of(found.why());
    EXPECT_EQ(found->parts.why(), WhyNot::few_hits);
    EXPECT_EQ(bathtub(*found, 10).why(), WhyNot::few_hits);
}

TEST(Jitter, NothingIsToldOfNothing) {
    EXPECT_EQ(jitter_of(synthetic::nothing(), {}).why(), WhyNot::no_hits);
}

} // namespace
} // namespace kv408
