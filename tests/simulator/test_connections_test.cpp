#include "simulator/test_connections.h"

#include <gtest/gtest.h>

namespace kv408::simulator {
namespace {

struct Case {
    TestConnection connection;
    double amplitude_mvpp;
    SamplerRoute ch1;
    SamplerRoute ch2;
};

class TestConnections : public testing::TestWithParam<Case> {};

TEST_P(TestConnections, BringACleanSineToTriggerAndSampler) {
    const Case& expected = GetParam();
    TestBench bench;
    bench.sources[0].kind = SignalKind::pulse;
    bench.sources[0].offset_mv = 30.0;
    bench.sources[0].noise_mv = 5.0;
    bench.errors.time_scale = 1.05;
    bench.faults.no_trigger = true;
    connect(bench, expected.connection);
    EXPECT_EQ(bench.sources[0].kind, SignalKind::sine);
    EXPECT_EQ(bench.sources[0].amplitude_mvpp, expected.amplitude_mvpp);
    EXPECT_EQ(bench.sources[0].frequency_hz, 10.0e6);
    EXPECT_EQ(bench.sources[0].offset_mv, 0.0);
    EXPECT_EQ(bench.sources[0].noise_mv, 0.0);
    EXPECT_EQ(bench.sources[0].jitter_ps, 0.0);
    EXPECT_EQ(bench.samplers, (std::array{expected.ch1, expected.ch2}));
    EXPECT_EQ(bench.triggers, (std::array{TriggerRoute::signal_1, TriggerRoute::signal_1}));
    EXPECT_EQ(bench.errors.time_scale, 1.05);
    EXPECT_TRUE(bench.faults.no_trigger);
}

INSTANTIATE_TEST_SUITE_P(
    All, TestConnections,
    testing::Values(Case{TestConnection::sine_200mv_ch1, 200.0, SamplerRoute::trigger_output,
                         SamplerRoute::disconnected},
                    Case{TestConnection::sine_200mv_ch2, 200.0, SamplerRoute::disconnected,
                         SamplerRoute::trigger_output},
                    Case{TestConnection::sine_1v_ch1, 1000.0, SamplerRoute::trigger_output,
                         SamplerRoute::disconnected},
                    Case{TestConnection::sine_1v_ch2, 1000.0, SamplerRoute::disconnected,
                         SamplerRoute::trigger_output},
                    Case{TestConnection::inputs_open, 1000.0, SamplerRoute::disconnected,
                         SamplerRoute::disconnected}));

TEST(ConnectionOfDelivery, ComesBack) {
    TestBench bench;
    connect(bench, TestConnection::sine_200mv_ch2);
    connect(bench, TestConnection::delivery);
    const TestBench delivered;
    EXPECT_EQ(bench.samplers, delivered.samplers);
    EXPECT_EQ(bench.triggers, delivered.triggers);
    EXPECT_EQ(bench.sources[0].amplitude_mvpp, delivered.sources[0].amplitude_mvpp);
    EXPECT_EQ(bench.sources[0].noise_mv, delivered.sources[0].noise_mv);
}

TEST(EyeConnections, BringDataToChannel1AndTheirCleanClockToTheTriggers) {
    for (const TestConnection eye : {TestConnection::eye_clean, TestConnection::eye_jitter_noise,
                                     TestConnection::eye_closing}) {
        TestBench bench;
        bench.errors.time_scale = 1.05;
        connect(bench, eye);
        EXPECT_EQ(connected(bench), eye);
        EXPECT_EQ(bench.sources[0].kind, SignalKind::random_data);
        EXPECT_EQ(bench.sources[1].kind, SignalKind::square);
        EXPECT_EQ(bench.sources[1].frequency_hz, bench.sources[0].frequency_hz);
        EXPECT_EQ(bench.sources[1].noise_mv, 0.0);
        EXPECT_EQ(bench.sources[1].jitter_ps, 0.0);
        EXPECT_EQ(bench.sources[1].sine_jitter_ps, 0.0);
        // Nothing of the data is left in it, should it become data itself.
        EXPECT_EQ(bench.sources[1].pattern_bits, 7);
        EXPECT_EQ(bench.sources[1].distortion_ps, 0.0);
        EXPECT_EQ(bench.sources[1].cable_ps, 0.0);
        EXPECT_EQ(bench.samplers,
                  (std::array{SamplerRoute::own_signal, SamplerRoute::disconnected}));
        EXPECT_EQ(bench.triggers, (std::array{TriggerRoute::signal_2, TriggerRoute::signal_2}));
        EXPECT_EQ(bench.errors.time_scale, 1.05);
        connect(bench, TestConnection::delivery);
        EXPECT_EQ(connected(bench), TestConnection::delivery);
    }
}

TEST(EyeConnections, AreCleanOrHaveJitterAndNoiseOrClose) {
    TestBench bench;
    connect(bench, TestConnection::eye_clean);
    EXPECT_EQ(bench.sources[0].pattern_bits, 7);
    EXPECT_EQ(bench.sources[0].sine_jitter_ps, 0.0);
    EXPECT_EQ(bench.sources[0].distortion_ps, 0.0);
    EXPECT_EQ(bench.sources[0].cable_ps, 0.0);
    const Source clean = bench.sources[0];
    connect(bench, TestConnection::eye_jitter_noise);
    EXPECT_EQ(bench.sources[0].pattern_bits, 15);
    EXPECT_GT(bench.sources[0].noise_mv, clean.noise_mv);
    EXPECT_GT(bench.sources[0].jitter_ps, clean.jitter_ps);
    EXPECT_GT(bench.sources[0].sine_jitter_ps, 0.0);
    EXPECT_GT(bench.sources[0].distortion_ps, 0.0);
    connect(bench, TestConnection::eye_closing);
    EXPECT_EQ(bench.sources[0].pattern_bits, 31);
    EXPECT_EQ(bench.sources[0].cable_ps * bench.sources[0].frequency_hz, 0.75e12);
}

} // namespace
} // namespace kv408::simulator
