#include "bench_driver.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kv408::simulator {
namespace {

/// Without noise and errors: every code can be computed by hand.
class Sampling : public BenchDriver {
protected:
    Sampling() {
        make_exact();
        set_trigger(0, 1);
        set_gain(2, 2);
        set_resolution(313);
    }

    /// A sine's code at `picoseconds` after it rose through its middle, before clipping.
    static double sine_code(double amplitude_mvpp, double frequency_hz, double picoseconds,
                            double codes_per_mv) {
        return 2048.0 + codes_per_mv * amplitude_mvpp / 2.0 *
                            std::sin(2.0 * std::numbers::pi * frequency_hz * picoseconds * 1e-12);
    }

    static double spread(const std::vector<int>& codes) {
        const auto [least, most] = std::minmax_element(codes.begin(), codes.end());
        return *most - *least;
    }

    /// 650 points within 650 ps, as good as one place of a slow signal.
    void sample_one_place() { set_resolution(1); }

    static constexpr double rounding = 0.5 + 1e-6;
};

TEST_F(Sampling, SineInLowGain) {
    const auto codes = sweep(1);
    ASSERT_EQ(codes.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        ASSERT_NEAR(codes[std::size_t(k)], sine_code(400, 10e6, 313.0 * k, 2), rounding) << k;
    }
}

TEST_F(Sampling, SineInHighGain) {
    set_gain(1, 2);
    const auto codes = sweep(1);
    ASSERT_EQ(codes.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        ASSERT_NEAR(codes[std::size_t(k)], sine_code(400, 10e6, 313.0 * k, 6), rounding) << k;
    }
}

TEST_F(Sampling, EachChannelHasItsOwnGain) {
    bench().sources[1] = bench().sources[0];
    set_gain(1, 2);
    EXPECT_NEAR(spread(sweep(1)), 2400.0, 5.0);
    EXPECT_NEAR(spread(sweep(2)), 800.0, 3.0);
    set_gain(2, 1);
    EXPECT_NEAR(spread(sweep(1)), 800.0, 3.0);
    EXPECT_NEAR(spread(sweep(2)), 2400.0, 5.0);
}

TEST_F(Sampling, CodesClipAtTheEndsOfTheScale) {
    bench().sources[0].amplitude_mvpp = 1000.0;
    set_gain(1, 2);
    const auto codes = sweep(1);
    ASSERT_EQ(codes.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        const double free = sine_code(1000, 10e6, 313.0 * k, 6);
        ASSERT_NEAR(codes[std::size_t(k)], std::clamp(free, 0.0, 4095.0), rounding) << k;
    }
    EXPECT_EQ(*std::max_element(codes.begin(), codes.end()), 4095);
    EXPECT_EQ(*std::min_element(codes.begin(), codes.end()), 0);
}

TEST_F(Sampling, PulseOfTheOtherChannelKeepsItsPhaseToTheTrigger) {
    Source& pulse = bench().sources[1];
    pulse = {SignalKind::pulse, 300.0, 20.0e6, 0.0, 1000.0, 0.3, 0.0, 0.0};
    set_resolution(100);
    set_offset(2, -1000);
    clock_.advance(std::chrono::seconds(777));
    const auto codes = sweep(2);
    ASSERT_EQ(codes.size(), 650U);
    EXPECT_NEAR(codes[5], 2048 - 2 * 120, rounding);  // -500 ps: 10 %
    EXPECT_NEAR(codes[10], 2048, rounding);           // 0 ps: the middle
    EXPECT_NEAR(codes[15], 2048 + 2 * 120, rounding); // 500 ps: 90 %
    EXPECT_EQ(codes[80], 2048 + 2 * 150);             // 7 ns: high
    EXPECT_NEAR(codes[160], 2048, rounding);          // 15 ns: falls
    EXPECT_EQ(codes[300], 2048 - 2 * 150);            // 29 ns: low
    EXPECT_NEAR(codes[510], 2048, rounding);          // 50 ns: the next edge
}

TEST_F(Sampling, OffsetsDelayEachChannelByItself) {
    bench().sources[1] = bench().sources[0];
    set_offset(1, 25000);
    set_offset(2, -12500);
    const auto first = sweep(1);
    const auto second = sweep(2);
    ASSERT_EQ(first.size(), 650U);
    ASSERT_EQ(second.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        const auto place = std::size_t(k);
        ASSERT_NEAR(first[place], sine_code(400, 10e6, 25000 + 313.0 * k, 2), rounding) << k;
        ASSERT_NEAR(second[place], sine_code(400, 10e6, -12500 + 313.0 * k, 2), rounding) << k;
    }
}

TEST_F(Sampling, ASinglePointLiesAtItsDelay) {
    set_gain(2, 1);
    bench().sources[1] = bench().sources[0];
    // c = 8333, divider 3: 24999 ps, as good as a quarter of the period; then the same on CH2.
    send(26, {0x20, 0x8D, 0, 1, 239});
    EXPECT_EQ(words(read(2)), std::vector<int>{2048 + 2 * 200});
    send(26, {0x20 + 0x80, 0x8D, 0, 1, 239});
    EXPECT_EQ(words(read(2)), std::vector<int>{2048 + 6 * 200});
}

TEST_F(Sampling, ASinglePointIsNotMovedByTheOffsets) {
    set_offset(1, 25000);
    send(26, {0, 0, 0, 1, 240});
    EXPECT_EQ(words(read(2)), std::vector<int>{2048});
}

TEST_F(Sampling, DisconnectedAndSilentInputsGiveZeroVolt) {
    bench().samplers[0] = SamplerRoute::disconnected;
    EXPECT_EQ(sweep(1), std::vector<int>(650, 2048));
    bench().sources[1].kind = SignalKind::none;
    EXPECT_EQ(sweep(2), std::vector<int>(650, 2048));
    // A generator that is off does not emit its noise either.
    bench().sources[1].noise_mv = 50.0;
    bench().sources[1].jitter_ps = 50.0;
    EXPECT_EQ(sweep(2), std::vector<int>(650, 2048));
}

TEST_F(Sampling, TheTriggerInputHalvesWhatItPassesOn) {
    bench().samplers[0] = SamplerRoute::via_trigger;
    const auto codes = sweep(1);
    ASSERT_EQ(codes.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        ASSERT_NEAR(codes[std::size_t(k)], sine_code(200, 10e6, 313.0 * k, 2), rounding) << k;
    }
}

TEST_F(Sampling, TheTriggerOutputDoesNotHalveAndFollowsTheSelectedInput) {
    bench().samplers[1] = SamplerRoute::trigger_output;
    bench().sources[1].kind = SignalKind::sine; // 20 MHz, 300 mVpp
    const auto first = sweep(2);
    ASSERT_EQ(first.size(), 650U);
    set_trigger(0, 21);
    const auto second = sweep(2);
    ASSERT_EQ(second.size(), 650U);
    for (int k = 0; k < 650; ++k) {
        const auto place = std::size_t(k);
        ASSERT_NEAR(first[place], sine_code(400, 10e6, 313.0 * k, 2), rounding) << k;
        ASSERT_NEAR(second[place], sine_code(300, 20e6, 313.0 * k, 2), rounding) << k;
    }
}

TEST_F(Sampling, ViaTriggerTakesTheTriggerInputOfTheSameNumber) {
    bench().samplers[1] = SamplerRoute::via_trigger;
    bench().triggers[1] = TriggerRoute::signal_1;
    const auto codes = sweep(2);
    ASSERT_EQ(codes.size(), 650U);
    EXPECT_NEAR(codes[80], sine_code(200, 10e6, 313.0 * 80, 2), rounding);
    bench().triggers[1] = TriggerRoute::disconnected;
    EXPECT_EQ(sweep(2), std::vector<int>(650, 2048));
}

TEST_F(Sampling, AnUnrelatedFrequencyIsCaughtAtEveryPhase) {
    sample_one_place();
    bench().sources[1] = bench().sources[0];
    EXPECT_LT(spread(sweep(2)), 40.0); // locked: 650 ps of a 100 ns sine from its middle
    bench().sources[1].frequency_hz = 13.37e6;
    const auto codes = sweep(2);
    ASSERT_EQ(codes.size(), 650U);
    EXPECT_GT(spread(codes), 795.0); // of 800
    const auto above =
        std::count_if(codes.begin(), codes.end(), [](int code) { return code > 2048; });
    EXPECT_GT(above, 260);
    EXPECT_LT(above, 390);
}

TEST_F(Sampling, HalfTheTriggerFrequencyGivesTwoTraces) {
    sample_one_place();
    bench().sources[1].kind = SignalKind::square; // 20 MHz, the trigger; CH1 is the 10 MHz sine
    bench().sources[0].kind = SignalKind::square;
    bench().sources[0].rise_time_ps = 0.0;
    set_trigger(0, 21);
    set_offset(1, 10000);
    const auto codes = sweep(1);
    ASSERT_EQ(codes.size(), 650U);
    const auto high = std::count(codes.begin(), codes.end(), 2048 + 400);
    const auto low = std::count(codes.begin(), codes.end(), 2048 - 400);
    EXPECT_EQ(high + low, 650);
    EXPECT_GT(high, 260);
    EXPECT_GT(low, 260);
}

TEST_F(Sampling, RandomDataDrawsAnEye) {
    bench().sources[0] = {SignalKind::random_data, 400.0, 100.0e6, 0.0, 500.0, 0.5, 0.0, 0.0};
    // Triggered on the clock: on the data itself every bit at a place would be the same.
    bench().triggers[0] = TriggerRoute::clock_1;
    sample_one_place();
    set_offset(1, 5000); // the middle of a bit of 10 ns
    const auto open = sweep(1);
    const auto high = std::count(open.begin(), open.end(), 2048 + 400);
    const auto low = std::count(open.begin(), open.end(), 2048 - 400);
    EXPECT_EQ(high + low, 650);
    EXPECT_GT(high, 200);
    EXPECT_GT(low, 200);
}

TEST_F(Sampling, ALateSweepLooksLikeAnEarlyOne) {
    const auto early = sweep(1);
    clock_.advance(std::chrono::hours(100));
    EXPECT_EQ(sweep(1), early);
}

} // namespace
} // namespace kv408::simulator
