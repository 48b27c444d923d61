#include "analysis/dual_dirac.h"

#include <gtest/gtest.h>

#include <cmath>

#include "analysis/normal.h"
#include "synthetic.h"

namespace kv408 {
namespace {

/// `hits` times of two lines `apart` that are spread by `random`, in bins of 1.
DensityHistogram two_lines(double apart, double random, int hits, unsigned seed = 3) {
    synthetic::Chance chance(seed);
    DensityHistogram times;
    times.first = -2000.0;
    times.hits.resize(4001);
    for (int hit = 0; hit < hits; ++hit) {
        const double time = (chance.coin() ? apart : -apart) / 2.0 + random * chance.normal();
        times.hits.at(static_cast<std::size_t>(std::lround(time) + 2000)) += 1.0;
    }
    return times;
}

TEST(Normal, SharesAndQuantilesAreThoseOfTheTables) {
    EXPECT_NEAR(normal_share(0.0), 0.5, 1e-15);
    EXPECT_NEAR(normal_share(1.0), 0.841344746, 1e-9);
    EXPECT_NEAR(normal_quantile(0.975), 1.959963985, 1e-9);
    EXPECT_NEAR(normal_quantile(1e-12), -7.034483825, 1e-8);
    EXPECT_NEAR(normal_quantile(normal_share(-3.7)), -3.7, 1e-12);
}

TEST(DualDirac, FindsTheTwoLinesAndTheirSpread) {
    for (const double random : {20.0, 50.0, 100.0}) {
        for (const double apart : {300.0, 600.0}) {
            const auto model = dual_dirac(two_lines(apart, random, 20000));
            ASSERT_TRUE(model);
            EXPECT_NEAR(model->random, random, 0.1 * random) << apart;
            EXPECT_NEAR(model->deterministic, apart, 0.1 * apart) << random;
            EXPECT_NEAR(model->total(told_error_ratio), apart + 14.069 * random,
                        0.1 * (apart + 14.069 * random));
            EXPECT_NEAR(model->tail_hits, 4000.0, 400.0);
        }
    }
}

TEST(DualDirac, OfRandomJitterAloneTheTotalIsThatOfItsDeviation) {
    const auto model = dual_dirac(two_lines(0.0, 100.0, 50000));
    ASSERT_TRUE(model);
    EXPECT_NEAR(model->total(told_error_ratio), 1406.9, 70.0);
    EXPECT_LT(model->deterministic, 100.0); // less than one deviation
}

TEST(DualDirac, FewHitsTellNothing) {
    EXPECT_EQ(dual_dirac(two_lines(300.0, 50.0, 300)).why(), WhyNot::few_hits);
    EXPECT_EQ(dual_dirac(DensityHistogram{}).why(), WhyNot::few_hits);
    DensityHistogram one;
    one.hits = {0.0, 1.0, 0.0};
    EXPECT_EQ(dual_dirac(one).why(), WhyNot::few_hits);
    one.hits = {0.0, 1e6, 0.0}; // without any spread
    EXPECT_EQ(dual_dirac(one).why(), WhyNot::few_hits);
}

TEST(DualDirac, NoiseIsTakenOffTheRandomPart) {
    const DualDirac model{.random = 5.0, .deterministic = 7.0};
    const auto rest = without_spread(model, 3.0);
    ASSERT_TRUE(rest);
    EXPECT_DOUBLE_EQ(rest->random, 4.0);
    EXPECT_DOUBLE_EQ(rest->deterministic, 7.0);
    EXPECT_EQ(without_spread(model, 5.5).why(), WhyNot::only_noise);
}

TEST(Bathtub, FallsFromTheCrossingsToTheMiddle) {
    const DualDirac model{.random = 10.0, .deterministic = 40.0, .left = 80.0, .right = 120.0};
    const auto at = [&](double time) { return bit_error_ratio(model, 100.0, time, 1000.0, 0.5); };
    // At the crossing half of the edges come later, and half of them would have been decided wrong.
    EXPECT_NEAR(at(0.0), 0.25, 0.003);
    // Three deviations beyond the later line.
    EXPECT_NEAR(at(50.0), 0.25 * normal_share(-3.0), 1e-9);
    EXPECT_NEAR(at(950.0), 0.25 * normal_share(-3.0), 1e-9);
    EXPECT_LT(at(500.0), 1e-12);
    EXPECT_NEAR(at(1000.0), 0.25, 0.003);
}

} // namespace
} // namespace kv408
