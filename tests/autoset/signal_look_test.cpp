// What a look at a sweep tells of its signal.

#include <cmath>
#include <functional>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "autoset/signal_look.h"

namespace kv408 {
namespace {

constexpr double two_pi = 2.0 * std::numbers::pi;

/// 650 points, `step` picoseconds apart from the trigger on, of what `signal` makes of a time in
/// picoseconds: millivolts, two codes each, with `noise` millivolts rms.
ChannelSweep look_sweep(double step, const std::function<double(double)>& signal,
                        double noise = 0.5, unsigned seed = 7) {
    ChannelSweep part;
    part.time_per_point = step;
    part.whole = true;
    std::mt19937 chance(seed);
    std::normal_distribution<double> normal(0.0, noise);
    for (int point = 0; point < 650; ++point) {
        const double code = std::round(2.0 * (signal(point * step) + normal(chance))) + 2048.0;
        part.codes.push_back(static_cast<std::int16_t>(std::clamp(code, 0.0, 4095.0)));
        part.mv.push_back((part.codes.back() - 2048.0) / 2.0);
    }
    return part;
}

std::function<double(double)> look_sine(double height, double period, double offset = 0.0) {
    return [=](double time) { return offset + height / 2.0 * std::sin(two_pi * time / period); };
}

TEST(SignalLook, TellsHeightAndPeriodOfASine) {
    const SignalLook look =
        look_at(look_sweep(313.0, look_sine(400.0, 60e3, 30.0)), StartedBy::unknown);
    EXPECT_TRUE(look.alive);
    EXPECT_FALSE(look.clipped);
    EXPECT_NEAR(look.height(), 400.0, 8.0);
    EXPECT_NEAR(look.middle(), 30.0, 4.0);
    ASSERT_TRUE(look.period);
    EXPECT_NEAR(*look.period, 60e3, 300.0);
}

TEST(SignalLook, SeesAFewMillivoltsAboveTheNoise) {
    const SignalLook look = look_at(look_sweep(313.0, look_sine(5.0, 60e3)), StartedBy::unknown);
    EXPECT_TRUE(look.alive);
    ASSERT_TRUE(look.period);
    EXPECT_NEAR(*look.period, 60e3, 2e3);
    EXPECT_FALSE(look_at(look_sweep(313.0, [](double) { return 20.0; }), StartedBy::unknown).alive)
        << "a steady voltage is no signal";
}

TEST(SignalLook, TakesTheEdgeThatStartedTheSweepForTheFirstOfTwo) {
    // 650 points of 313 ps show one and a half periods: one whole, from the trigger on.
    const ChannelSweep part = look_sweep(313.0, look_sine(400.0, 130e3));
    EXPECT_FALSE(look_at(part, StartedBy::unknown).period);
    const SignalLook look = look_at(part, StartedBy::rising);
    ASSERT_TRUE(look.period);
    EXPECT_NEAR(*look.period, 130e3, 1e3);
}

TEST(SignalLook, ReadsAPeriodOffTheEdgesThatItSees) {
    // 1.9 periods from a level far above the middle on, whose edge came 6.5 % of a period before:
    // two falling edges tell more than one rising edge and the trigger.
    const auto late = [](double time) { return look_sine(400.0, 100e3)(time + 6.55e3); };
    const SignalLook look = look_at(look_sweep(190e3 / 650, late), StartedBy::rising);
    ASSERT_TRUE(look.period);
    EXPECT_NEAR(*look.period, 100e3, 1e3);
}

TEST(SignalLook, ReadsAPeriodOutOfNoise) {
    // 1.9 periods of 20 mVpp, begun a quarter of a period before, with 0.8 mV of noise: a point of
    // the edges is known to 0.8 mV / (pi 20 mV / 342 points) = 4.4 points, or 1.3 % of a period.
    const auto early = [](double time) { return look_sine(20.0, 100e3)(time + 25e3); };
    double squares = 0.0;
    constexpr unsigned sweeps = 100;
    for (unsigned seed = 0; seed < sweeps; ++seed) {
        const SignalLook look =
            look_at(look_sweep(190e3 / 650, early, 0.8, seed), StartedBy::unknown);
        ASSERT_TRUE(look.period) << seed;
        squares += std::pow(*look.period / 100e3 - 1.0, 2.0);
    }
    EXPECT_LT(std::sqrt(squares / sweeps), 0.005);
}

TEST(SignalLook, TakesNoNoiseForData) {
    // A steady level with 5 mV of noise.
    int taken = 0;
    constexpr unsigned sweeps = 400;
    for (unsigned seed = 0; seed < sweeps; ++seed) {
        const ChannelSweep part = look_sweep(
            100.0, [](double) { return 100.0; }, 5.0, seed);
        taken += look_at(part, StartedBy::rising).edge ? 1 : 0;
    }
    EXPECT_LE(taken, static_cast<int>(sweeps) / 100);
}

TEST(SignalLook, TakesNoPartOfAPeriodForOne) {
    for (const double periods : {0.1, 0.25, 0.5, 0.75, 0.95}) {
        const SignalLook look =
            look_at(look_sweep(313.0, look_sine(400.0, 313.0 * 650 / periods)), StartedBy::rising);
        EXPECT_FALSE(look.period) << periods;
        EXPECT_FALSE(look.edge) << periods;
    }
}

TEST(SignalLook, FindsTheEdgeBehindWhichDataDoNotFollowTheTrigger) {
    std::mt19937 chance(3);
    // High for 50 points, as each sweep begins with a rising edge; then either.
    const ChannelSweep part = look_sweep(
        100.0, [&](double time) { return time < 5000.0 || chance() % 2 == 0 ? 100.0 : -100.0; });
    const SignalLook look = look_at(part, StartedBy::rising);
    EXPECT_FALSE(look.period);
    ASSERT_TRUE(look.edge);
    EXPECT_NEAR(*look.edge, 5000.0, 300.0);
    const ChannelSweep loose =
        look_sweep(100.0, [&](double) { return chance() % 2 == 0 ? 100.0 : -100.0; });
    const SignalLook none = look_at(loose, StartedBy::unknown);
    EXPECT_TRUE(none.alive);
    EXPECT_FALSE(none.period || none.edge) << "nothing of it follows the trigger";
}

TEST(SignalLook, TellsOfTheInputAndNotOfTheScreen) {
    ChannelSweep part = look_sweep(313.0, look_sine(400.0, 60e3, 100.0));
    for (double& value : part.mv) {
        value = -value; // as "Invert" turns it
    }
    part.conversion.inverted = true;
    EXPECT_NEAR(look_at(part, StartedBy::unknown).middle(), 100.0, 4.0);
}

TEST(SignalLook, SaysWhatIsCutOff) {
    EXPECT_TRUE(look_at(look_sweep(313.0, look_sine(3000.0, 60e3)), StartedBy::unknown).clipped);
}

TEST(SignalLook, MakesNothingOfAPassThatHasHardlyBegun) {
    ChannelSweep part = look_sweep(313.0, look_sine(400.0, 60e3));
    part.mv.resize(10);
    EXPECT_FALSE(look_at(part, StartedBy::unknown).alive);
}

} // namespace
} // namespace kv408
