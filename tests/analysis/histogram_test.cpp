#include "analysis/histogram.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace kv408 {
namespace {

/// Four points from 1000 ps on, 8 ps apart; half a millivolt per code, 0 mV at code 2048.
Collected collected(bool inverted = false) {
    MeasuredWith with;
    with.first_time = 1000.0;
    with.time_per_point = 8.0;
    with.conversion = {.inverted = inverted, .atten = 0.5, .vtfactor = 1.0, .swoffset = 0};
    return {.counts = Density(4), .with = with};
}

void add(Collected& to, std::array<std::int16_t, 4> codes, std::uint32_t weight = 1) {
    to.counts.add(codes, weight);
}

constexpr DensityWindow everywhere{0, 4, 0, scale_codes};

TEST(Histogram, LevelsAreCountedOverTheWindowsPoints) {
    Collected sweeps = collected();
    add(sweeps, {2000, 2048, 2050, 2100});
    add(sweeps, {2000, 2050, 2050, 2048});
    const DensityHistogram found = histogram_of(sweeps, {1, 3, 2048, 2052}, HistogramOf::levels);
    EXPECT_EQ(found.hits, (std::vector<double>{1, 0, 3, 0}));
    EXPECT_DOUBLE_EQ(found.first, 0.0);
    EXPECT_DOUBLE_EQ(found.value_of(2), 1.0);
    EXPECT_EQ(found.clipped, 0.0);
}

TEST(Histogram, TimesAreCountedOverTheWindowsCodes) {
    Collected sweeps = collected();
    add(sweeps, {2000, 2048, 2050, 2100});
    add(sweeps, {2000, 2050, 2060, 2048});
    const DensityHistogram found = histogram_of(sweeps, {1, 4, 2048, 2060}, HistogramOf::times);
    EXPECT_EQ(found.hits, (std::vector<double>{2, 1, 1}));
    EXPECT_DOUBLE_EQ(found.first, 1008.0);
    EXPECT_DOUBLE_EQ(found.value_of(2), 1024.0);
}

TEST(Histogram, AnInvertedChannelsLevelsRiseFromBinToBinToo) {
    Collected sweeps = collected(true);
    add(sweeps, {2048, 2048, 2048, 2050});
    const DensityHistogram found = histogram_of(sweeps, {0, 4, 2048, 2051}, HistogramOf::levels);
    EXPECT_EQ(found.hits, (std::vector<double>{1, 0, 3}));
    EXPECT_DOUBLE_EQ(found.first, -1.0);
    EXPECT_DOUBLE_EQ(found.step, 0.5);
    EXPECT_DOUBLE_EQ(found.value_of(2), 0.0);
    const auto statistics = statistics_of(found);
    ASSERT_TRUE(statistics);
    EXPECT_DOUBLE_EQ(statistics->mode, 0.0);
    EXPECT_DOUBLE_EQ(statistics->mean, -0.25);
}

TEST(Histogram, AHitCountsLessWhereCountersCountMore) {
    Collected sweeps = collected();
    add(sweeps, {2048, 2048, 2048, 2048}, 10);
    sweeps.weight = 10.0;
    const DensityHistogram found = histogram_of(sweeps, everywhere, HistogramOf::times);
    EXPECT_EQ(found.hits, (std::vector<double>{1, 1, 1, 1}));
}

TEST(Histogram, HitsAtAnEndOfTheScaleAreToldAsClipped) {
    Collected sweeps = collected();
    add(sweeps, {0, 4095, 2048, 4095});
    EXPECT_EQ(histogram_of(sweeps, everywhere, HistogramOf::levels).clipped, 3.0);
    EXPECT_EQ(histogram_of(sweeps, {0, 4, 0, 4095}, HistogramOf::levels).clipped, 1.0);
    EXPECT_EQ(histogram_of(sweeps, {0, 2, 1, 4096}, HistogramOf::times).clipped, 1.0);
}

TEST(Histogram, AWindowBeyondTheDensityIsEmptyThere) {
    Collected sweeps = collected();
    add(sweeps, {0, 4095, 2048, 4095});
    EXPECT_EQ(histogram_of(sweeps, {-5, 9, -1, 5000}, HistogramOf::times).hits,
              (std::vector<double>{1, 1, 1, 1}));
    EXPECT_TRUE(histogram_of(sweeps, {3, 2, 0, 9}, HistogramOf::times).hits.empty());
}

TEST(HistogramStatistics, AreThoseOfTheHits) {
    // 1, 1, 2, 2, 2, 7: by hand.
    const DensityHistogram histogram{
        .hits = {0, 2, 3, 0, 0, 0, 0, 1, 0}, .first = 0.0, .step = 1.0};
    const auto found = statistics_of(histogram);
    ASSERT_TRUE(found);
    EXPECT_DOUBLE_EQ(found->hits, 6.0);
    EXPECT_DOUBLE_EQ(found->mean, 2.5);
    EXPECT_DOUBLE_EQ(found->median, 2.0);
    EXPECT_DOUBLE_EQ(found->mode, 2.0);
    EXPECT_DOUBLE_EQ(found->sigma, std::sqrt(25.5 / 6.0)); // 2.06
    EXPECT_DOUBLE_EQ(found->lowest, 1.0);
    EXPECT_DOUBLE_EQ(found->highest, 7.0);
    EXPECT_DOUBLE_EQ(found->peak_to_peak, 6.0);
    EXPECT_DOUBLE_EQ(found->within_1, 5.0 / 6.0);
    EXPECT_DOUBLE_EQ(found->within_2, 5.0 / 6.0);
    EXPECT_DOUBLE_EQ(found->within_3, 1.0);
}

TEST(HistogramStatistics, AreInTheHistogramsUnit) {
    const auto found = statistics_of({.hits = {1, 0, 1}, .first = -10.0, .step = 2.5});
    ASSERT_TRUE(found);
    EXPECT_DOUBLE_EQ(found->mean, -7.5);
    EXPECT_DOUBLE_EQ(found->median, -7.5); // between the two
    EXPECT_DOUBLE_EQ(found->mode, -10.0);
    EXPECT_DOUBLE_EQ(found->sigma, 2.5);
    EXPECT_DOUBLE_EQ(found->within_1, 1.0); // both lie at one sigma
}

TEST(HistogramStatistics, OneHitHasNoDeviation) {
    const auto found = statistics_of({.hits = {0, 0, 1}, .first = 3.0, .step = 2.0});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->hits, 1.0);
    EXPECT_EQ(found->mean, 7.0);
    EXPECT_EQ(found->median, 7.0);
    EXPECT_EQ(found->sigma, 0.0);
    EXPECT_EQ(found->peak_to_peak, 0.0);
    EXPECT_EQ(found->within_1, 1.0);
}

TEST(HistogramStatistics, ThereAreNoneOfNothing) {
    EXPECT_FALSE(statistics_of({.hits = {0, 0, 0}}));
    EXPECT_FALSE(statistics_of(DensityHistogram{}));
}

TEST(HistogramStatistics, ManyHitsFarFromZeroKeepTheirSmallDeviation) {
    const auto found = statistics_of({.hits = {4e9, 8e9, 4e9}, .first = 1e9, .step = 1e-3});
    ASSERT_TRUE(found);
    EXPECT_NEAR(found->sigma, 1e-3 * std::sqrt(0.5), 1e-12);
}

} // namespace
} // namespace kv408
