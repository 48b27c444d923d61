// What jitter and noise of the trigger signal do to the picture: they move the trigger, and with it
// every trace but that of the edge that triggered.

#include "bench_driver.h"

#include <cmath>
#include <utility>

namespace kv408::simulator {
namespace {

class TriggerJitter : public BenchDriver {
protected:
    TriggerJitter() {
        make_exact();
        bench().sources[0] = {SignalKind::sine, 400.0, 10.0e6, 0.0, 0.0, 0.5, 0.0, 0.0};
        bench().sources[1] = {SignalKind::sine, 300.0, 50.0e6, 0.0, 0.0, 0.5, 0.0, 0.0};
        set_trigger(0, 1);
        set_gain(1, 1);
        set_resolution(0); // 650 times the same place
    }

    /// Deviation of `channel` in codes, 650 samples of one place; known to 2.8 %.
    double deviation(int channel, std::int32_t delay_ps) {
        set_offset(channel, delay_ps);
        const auto codes = sweep(channel);
        EXPECT_EQ(codes.size(), 650U);
        double sum = 0.0;
        double squares = 0.0;
        for (const int code : codes) {
            sum += code;
            squares += double(code) * code;
        }
        const auto count = static_cast<double>(codes.size());
        return std::sqrt(squares / count - sum / count * (sum / count));
    }

    // Where they cross 0 V: 6 codes per mV, pi * 400 mV * 10 MHz and pi * 300 mV * 50 MHz.
    static constexpr double codes_per_ps_1 = 6.0 * 3.14159265 * 400.0 * 10.0e6 * 1e-12;
    static constexpr double codes_per_ps_2 = 6.0 * 3.14159265 * 300.0 * 50.0e6 * 1e-12;
};

TEST_F(TriggerJitter, MovesTheOtherChannelAndNotTheEdgeThatTriggers) {
    bench().sources[0].jitter_ps = 200.0;
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, 200.0, 20.0);
    EXPECT_LT(deviation(1, 0) / codes_per_ps_1, 7.0); // half a code
    // However far away: the trigger moves the whole trace.
    EXPECT_NEAR(deviation(2, 100000) / codes_per_ps_2, 200.0, 20.0);
}

TEST_F(TriggerJitter, OfAnotherEdgeOfTheTriggerSignalIsThatOfBothEdges) {
    bench().sources[0].jitter_ps = 200.0;
    EXPECT_NEAR(deviation(1, 50000) / codes_per_ps_1, 200.0 * std::sqrt(2.0), 28.0);
    EXPECT_NEAR(deviation(1, 100000) / codes_per_ps_1, 200.0 * std::sqrt(2.0), 28.0);
    EXPECT_NEAR(deviation(1, -50000) / codes_per_ps_1, 200.0 * std::sqrt(2.0), 28.0);
}

TEST_F(TriggerJitter, AddsToThatOfTheChannel) {
    bench().sources[0].jitter_ps = 200.0;
    bench().sources[1].jitter_ps = 100.0;
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, std::hypot(200.0, 100.0), 22.0);
    // Triggered on the other signal it is the other way round.
    set_trigger(0, 21);
    EXPECT_LT(deviation(2, 0) / codes_per_ps_2, 2.0);
    bench().sources[0].frequency_hz = 50.0e6; // five times as steep
    EXPECT_NEAR(deviation(1, 0) / (5.0 * codes_per_ps_1), std::hypot(200.0, 100.0), 22.0);
}

TEST_F(TriggerJitter, DoesNotShowAtTheTriggerOutputEither) {
    bench().sources[0].jitter_ps = 200.0;
    bench().samplers[1] = SamplerRoute::trigger_output;
    EXPECT_LT(deviation(2, 0) / codes_per_ps_1, 7.0);
}

TEST_F(TriggerJitter, OfTheClockIsThatOfItsData) {
    bench().sources[0] = {SignalKind::random_data, 400.0, 10.0e6, 0.0, 20000.0, 0.5, 0.0, 200.0};
    bench().triggers[0] = TriggerRoute::clock_1;
    // At the boundary of a bit that triggers: the data move along with it, at the next one not.
    // Only those of 650 bits that rise there tell.
    const auto spread_of_rises = [this](std::int32_t delay_ps) {
        set_offset(1, delay_ps);
        double squares = 0.0;
        int count = 0;
        for (const int code : sweep(1)) {
            if (std::abs(code - 2048) < 400) {
                squares += double(code - 2048) * (code - 2048);
                ++count;
            }
        }
        EXPECT_GT(count, 200);
        return std::sqrt(squares / count);
    };
    EXPECT_LT(spread_of_rises(0), 1.0);
    EXPECT_GT(spread_of_rises(100000), 10.0);
    // Another signal shows the whole of it.
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, 200.0, 20.0);
}

TEST_F(TriggerJitter, OfASineIsThatOfItsPeakAndMovesBoth) {
    // At a channel: a sine's deviation, and never beyond its peak.
    bench().sources[1].sine_jitter_ps = 200.0;
    bench().sources[1].sine_jitter_hz = 1.31e6;
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, 200.0 / std::sqrt(2.0), 10.0);
    for (const int code : sweep(2)) {
        EXPECT_LE(std::abs(code - 2048), 200.0 * codes_per_ps_2 + 1.0);
    }
    // At the trigger it moves the other channel, and not the edge that triggers.
    std::swap(bench().sources[0].sine_jitter_ps, bench().sources[1].sine_jitter_ps);
    bench().sources[0].sine_jitter_hz = 1.31e6;
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, 200.0 / std::sqrt(2.0), 10.0);
    EXPECT_LT(deviation(1, 0), 0.5);
    // As fast as the signal repeats it is always the same.
    bench().sources[0].sine_jitter_hz = bench().sources[0].frequency_hz;
    EXPECT_LT(deviation(2, 0), 0.5);
}

TEST_F(TriggerJitter, ComesOfNoiseBySlope) {
    // 4 mV at pi * 400 mV * 10 MHz = 0.01257 mV/ps are 318 ps.
    bench().sources[0].noise_mv = 4.0;
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, 318.0, 32.0);
    set_trigger(0, 2);
    EXPECT_NEAR(deviation(2, 0) / codes_per_ps_2, 318.0, 32.0);
    // Without a slope there is nothing to move along.
    bench().sources[0].kind = SignalKind::square;
    set_trigger(0, 1);
    EXPECT_LT(deviation(2, 0), 0.5);
}

TEST_F(TriggerJitter, OfNoiseThatReachesOverTheSignalEndsAtItsPeak) {
    // A quarter of the period is the farthest that the crossing can move.
    bench().sources[0].noise_mv = 4000.0;
    set_offset(2, 0);
    bench().sources[1] = bench().sources[0];
    bench().sources[1].noise_mv = 0.0;
    for (const int code : sweep(2)) {
        ASSERT_GE(code, 2048 - 1200);
        ASSERT_LE(code, 2048 + 1200);
    }
    EXPECT_GT(deviation(2, 0), 1000.0);
}

TEST_F(TriggerJitter, MovesSinglePointsToo) {
    bench().sources[0].jitter_ps = 200.0;
    double squares = 0.0;
    for (int point = 0; point < 650; ++point) {
        send(26, {0x80, 0, 0, 1, 240});
        const double off = words(read(2)).at(0) - 2048.0;
        squares += off * off;
    }
    EXPECT_NEAR(std::sqrt(squares / 650.0) / codes_per_ps_2, 200.0, 20.0);
}

} // namespace
} // namespace kv408::simulator
