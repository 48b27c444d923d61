#include "analysis/eye.h"

#include <gtest/gtest.h>

#include "synthetic.h"

namespace kv408 {
namespace {

/// Random data whose noise and jitter are known: bits of 2000 ps, a crossing at 1800 ps.
struct Data {
    double jitter_ps = 20.0;
    double noise_mv = 4.0;
    double falls_later_ps = 0.0;
    bool inverted = false;
    double time_per_point = 10.0;
    int sweeps = 600;
};

constexpr double bit = 2000.0;
constexpr double length = 800.0;

Collected data_of(const Data& data) {
    synthetic::Chance chance(11);
    Collected sweeps = synthetic::nothing(data.inverted, data.time_per_point);
    synthetic::count(sweeps, data.sweeps, [&](double time) {
        const double late = data.jitter_ps * chance.normal();
        // The bit that the edge nearest to this time leads from, and the one it leads to.
        const double place = std::round((time - 1800.0) / bit) * bit + 1800.0;
        const double before = chance.coin() ? 200.0 : -200.0;
        const double after = chance.coin() ? 200.0 : -200.0;
        const double shift = (after < before ? 0.5 : -0.5) * data.falls_later_ps;
        return before + (after - before) * synthetic::edge(time - place - shift - late, length) +
               data.noise_mv * chance.normal();
    });
    return sweeps;
}

const double edge_slope = 200.0 * std::numbers::pi / length;
const double duration = length * 2.0 * std::asin(0.6) / std::numbers::pi;

void expect_eye(const Eye& eye, const Data& data) {
    EXPECT_NEAR(eye.interval, bit, 4.0);
    EXPECT_NEAR(eye.crossing, 3800.0, 6.0); // left of the middle, at 4200 ps
    EXPECT_NEAR(eye.levels.one.mean, 200.0, 0.2);
    EXPECT_NEAR(eye.levels.zero.mean, -200.0, 0.2);
    EXPECT_NEAR(eye.levels.one.sigma, data.noise_mv, 0.02 * data.noise_mv);
    const double sigma = std::hypot(data.jitter_ps, data.noise_mv / edge_slope);
    EXPECT_NEAR(eye.crossing_sigma, sigma, 0.03 * sigma);
    ASSERT_TRUE(eye.height);
    EXPECT_NEAR(*eye.height, 400.0 - 6.0 * data.noise_mv, 3.0);
    ASSERT_TRUE(eye.width);
    EXPECT_NEAR(*eye.width, bit - 6.0 * sigma, 0.02 * bit);
    ASSERT_TRUE(eye.q);
    EXPECT_NEAR(*eye.q, 200.0 / data.noise_mv, 0.02 * 200.0 / data.noise_mv);
    ASSERT_TRUE(eye.signal_to_noise);
    EXPECT_NEAR(*eye.signal_to_noise, 20.0 * std::log10(400.0 / data.noise_mv), 0.2);
    EXPECT_NEAR(eye.distortion, data.falls_later_ps, 8.0);
    ASSERT_TRUE(eye.rise_time);
    EXPECT_NEAR(*eye.rise_time, duration, 0.05 * duration);
    ASSERT_TRUE(eye.fall_time);
    EXPECT_NEAR(*eye.fall_time, duration, 0.05 * duration);
}

TEST(Eye, IsThatOfTheData) {
    const Data data;
    const auto eye = eye_of(data_of(data), {});
    ASSERT_TRUE(eye) << text_of(eye.why());
    expect_eye(*eye, data);
    EXPECT_NEAR(eye->crossing_percentage, 50.0, 1.0);
}

TEST(Eye, OfAnInvertedChannelIsTheSame) {
    const Data data{.inverted = true};
    const auto eye = eye_of(data_of(data), {});
    ASSERT_TRUE(eye) << text_of(eye.why());
    expect_eye(*eye, data);
}

TEST(Eye, WithMuchJitterIsMeasuredFromMeanAndVariance) {
    const Data data{.jitter_ps = 120.0, .noise_mv = 8.0, .sweeps = 1500};
    const auto eye = eye_of(data_of(data), {});
    ASSERT_TRUE(eye) << text_of(eye.why());
    expect_eye(*eye, data);
}

TEST(Eye, EdgesThatFallLaterCrossAboveTheMiddle) {
    const Data data{.falls_later_ps = 100.0};
    const auto eye = eye_of(data_of(data), {});
    ASSERT_TRUE(eye) << text_of(eye.why());
    expect_eye(*eye, data);
    EXPECT_NEAR(eye->crossing_percentage, 50.0 + 50.0 * std::sin(std::numbers::pi * 50.0 / length),
                1.0);
}

TEST(Eye, TakesAnIntervalAndACrossingThatAreTyped) {
    const Collected all = data_of({});
    const auto eye = eye_of(all, {.interval = 2000.0, .crossing = 5800.0});
    ASSERT_TRUE(eye) << text_of(eye.why());
    expect_eye(*eye, {});
    EXPECT_EQ(eye->interval, 2000.0);
    EXPECT_NEAR(eye->crossing, 3800.0, 1e-9);
    EXPECT_TRUE(eye_of(all, {.crossing = 5800.0}));
    EXPECT_TRUE(eye_of(all, {.interval = 2000.0}));
    EXPECT_EQ(eye_of(all, {.interval = 15.0, .crossing = 1.0}).why(), WhyNot::points_apart);
    EXPECT_EQ(eye_of(all, {.interval = 1e6, .crossing = 5e5}).why(), WhyNot::no_crossing);
}

TEST(Eye, NeedsTwoCrossingsOnTheScreen) {
    EXPECT_EQ(eye_of(data_of({.time_per_point = 2.5}), {}).why(), WhyNot::one_crossing);
}

TEST(Eye, OfOneSweepIsNotTold) {
    EXPECT_FALSE(eye_of(data_of({.sweeps = 1}), {}));
}

TEST(Eye, IsClosedByNoiseAndByJitter) {
    const auto noisy = eye_of(data_of({.noise_mv = 80.0}), {});
    ASSERT_TRUE(noisy) << text_of(noisy.why());
    EXPECT_FALSE(noisy->height);
    EXPECT_EQ(noisy->height.why(), WhyNot::closed);
    const auto jittery = eye_of(data_of({.jitter_ps = 450.0}), {});
    if (jittery) {
        EXPECT_FALSE(jittery->width);
    } else {
        EXPECT_EQ(jittery.why(), WhyNot::closed);
    }
}

TEST(Eye, WithoutAnyNoiseHasNoQ) {
    const auto eye = eye_of(data_of({.jitter_ps = 0.0, .noise_mv = 0.0}), {});
    ASSERT_TRUE(eye) << text_of(eye.why());
    ASSERT_TRUE(eye->height);
    EXPECT_NEAR(*eye->height, 400.0, 0.5);
    EXPECT_EQ(eye->q.why(), WhyNot::few_hits);
    EXPECT_FALSE(eye->q);
}

} // namespace
} // namespace kv408
