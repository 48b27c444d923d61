#include "bench_driver.h"

#include <cmath>

namespace kv408::simulator {
namespace {

struct Statistics {
    double mean = 0.0;
    double deviation = 0.0;
};

template <typename Values>
Statistics statistics(const Values& values) {
    double sum = 0.0;
    double squares = 0.0;
    for (const double value : values) {
        sum += value;
        squares += value * value;
    }
    const auto count = static_cast<double>(values.size());
    return {sum / count, std::sqrt(squares / count - sum / count * (sum / count))};
}

TEST(Noise, SameSeedSameSequence) {
    Noise first(7);
    Noise second(7);
    Noise other(8);
    int equal = 0;
    for (int draw = 0; draw < 1000; ++draw) {
        const auto bits = first.bits();
        EXPECT_EQ(bits, second.bits());
        equal += bits == other.bits() ? 1 : 0;
    }
    EXPECT_EQ(equal, 0);
}

TEST(Noise, PublishedValuesOfTheGenerator) {
    // The first outputs of splitmix64 for 1234567 as its seed.
    Noise noise(1234567);
    EXPECT_EQ(noise.bits(), 6457827717110365317U);
    EXPECT_EQ(noise.bits(), 3203168211198807973U);
    EXPECT_EQ(noise.bits(), 9817491932198370423U);
}

TEST(Noise, UniformAndGaussianHaveTheirMoments) {
    Noise noise(3);
    std::vector<double> uniform;
    std::vector<double> gaussian;
    int beyond_two = 0;
    for (int draw = 0; draw < 100000; ++draw) {
        uniform.push_back(noise.uniform());
        gaussian.push_back(noise.gaussian());
        EXPECT_GE(uniform.back(), 0.0);
        EXPECT_LT(uniform.back(), 1.0);
        beyond_two += std::abs(gaussian.back()) > 2.0 ? 1 : 0;
    }
    EXPECT_NEAR(statistics(uniform).mean, 0.5, 0.004);
    EXPECT_NEAR(statistics(uniform).deviation, 1.0 / std::sqrt(12.0), 0.003);
    EXPECT_NEAR(statistics(gaussian).mean, 0.0, 0.013);
    EXPECT_NEAR(statistics(gaussian).deviation, 1.0, 0.01);
    EXPECT_NEAR(beyond_two / 100000.0, 0.0455, 0.004); // of a normal distribution
}

// Random jitter is told from how fast its tails fall off.
TEST(Noise, GaussianHasTheTailsOfANormalDistribution) {
    constexpr int draws = 4000000;
    Noise noise(5);
    std::array<int, 3> beyond{}; // three, three and a half and four standard deviations
    for (int draw = 0; draw < draws; ++draw) {
        const double far = std::abs(noise.gaussian());
        for (std::size_t limit = 0; limit < beyond.size(); ++limit) {
            beyond[limit] += far > 3.0 + 0.5 * static_cast<double>(limit) ? 1 : 0;
        }
    }
    // As tables of the normal distribution have them; the last two stand on some 1900 and 250
    // draws.
    EXPECT_NEAR(beyond[0] / (draws * 2.69980e-3), 1.0, 0.04);
    EXPECT_NEAR(beyond[1] / (draws * 4.65258e-4), 1.0, 0.1);
    EXPECT_NEAR(beyond[2] / (draws * 6.33425e-5), 1.0, 0.25);
}

class SweepNoise : public BenchDriver {
protected:
    SweepNoise() {
        make_exact();
        set_trigger(0, 1);
        set_gain(2, 2);
        bench().samplers[1] = SamplerRoute::disconnected;
    }

    Statistics of_sweep(int channel, bool average, bool fast) {
        return statistics(sweep(channel, average, fast));
    }
};

TEST_F(SweepNoise, AveragingHalvesAndSpeedDoublesIt) {
    bench().sampler_noise_codes = 10.0;
    // The deviation of 650 values is known to 2.8 %.
    EXPECT_NEAR(of_sweep(2, false, false).deviation, 10.0, 1.0);
    EXPECT_NEAR(of_sweep(2, true, false).deviation, 5.0, 0.5);
    EXPECT_NEAR(of_sweep(2, false, true).deviation, 20.0, 2.0);
    EXPECT_NEAR(of_sweep(2, true, true).deviation, 10.0, 1.0);
    EXPECT_NEAR(of_sweep(2, false, false).mean, 2048.0, 1.6);
}

TEST_F(SweepNoise, AveragesAreRoundedNotCut) {
    bench().sampler_noise_codes = 10.0;
    double sum = 0.0;
    for (int round = 0; round < 40; ++round) {
        sum += of_sweep(2, true, false).mean;
    }
    // The mean of 26000 values of deviation 5 is known to 0.03; cutting would take 0.375.
    EXPECT_NEAR(sum / 40.0, 2048.0, 0.15);
}

TEST_F(SweepNoise, ASignalBringsItsOwn) {
    bench().sources[0].noise_mv = 4.0;
    set_resolution(1);
    set_offset(1, 25000 - 325);                                 // the top of the sine
    EXPECT_NEAR(of_sweep(1, false, false).deviation, 8.0, 0.8); // 2 codes per mV
    EXPECT_NEAR(of_sweep(1, true, false).deviation, 4.0, 0.4);
    bench().samplers[0] = SamplerRoute::via_trigger;
    EXPECT_NEAR(of_sweep(1, false, false).deviation, 4.0, 0.4);
}

TEST_F(SweepNoise, JitterShowsOnTheEdges) {
    // 300 mVpp at 50 MHz rise through the middle with pi * 300 mV * 50 MHz = 0.0471 mV/ps.
    bench().samplers[1] = SamplerRoute::own_signal;
    bench().sources[1] = {SignalKind::sine, 300.0, 50.0e6, 0.0, 0.0, 0.5, 0.0, 300.0};
    set_gain(2, 1);
    set_resolution(1);
    set_offset(2, -325);
    const auto slope = of_sweep(2, false, false);
    // 300 ps give 84.8 codes, the 650 points of the slope itself 650 ps / sqrt(12): 53.0.
    EXPECT_NEAR(slope.deviation, std::hypot(84.8, 53.0), 10.0);
    set_offset(2, 5000 - 325); // the top
    EXPECT_LT(of_sweep(2, false, false).deviation, 10.0);
}

TEST_F(SweepNoise, TheSeedDecidesIt) {
    const auto run = [](std::uint64_t seed) {
        VirtualClock clock;
        Simulation simulation(clock, {}, seed);
        std::vector<Byte> bytes(1300);
        simulation.bridge().open(0);
        simulation.bridge().set_speed(833000);
        simulation.bridge().write(frame(32, {2, 138, 0, 0, 1}));
        EXPECT_EQ(simulation.bridge().read(bytes).count, 1300U);
        return bytes;
    };
    EXPECT_EQ(run(5), run(5));
    EXPECT_NE(run(5), run(6));
}

} // namespace
} // namespace kv408::simulator
