#include "simulator/test_connections.h"

namespace kv408::simulator {
namespace {

constexpr double small_mvpp = 200.0;
constexpr double large_mvpp = 1000.0;

Source clean_sine(double amplitude_mvpp) {
    Source source;
    source.kind = SignalKind::sine;
    source.amplitude_mvpp = amplitude_mvpp;
    source.frequency_hz = 10.0e6;
    return source;
}

Source random_data() {
    Source source;
    source.kind = SignalKind::random_data;
    source.amplitude_mvpp = 400.0;
    source.frequency_hz = 12.5e6; // two and a half bits in the ten divisions of 20 ns
    source.rise_time_ps = 8000.0;
    source.noise_mv = 1.0;
    source.jitter_ps = 50.0;
    return source;
}

Source jittering_data() {
    Source source = random_data();
    source.pattern_bits = 15;
    source.noise_mv = 8.0;
    source.jitter_ps = 1000.0;
    source.sine_jitter_ps = 3000.0;
    source.sine_jitter_hz = 1.31e6;
    source.distortion_ps = 2000.0;
    return source;
}

Source closing_data() {
    Source source = random_data();
    source.pattern_bits = 31;
    source.noise_mv = 8.0;
    source.jitter_ps = 1000.0;
    source.cable_ps = 60000.0;
    return source;
}

void connect_eye(TestBench& bench, const Source& data) {
    // The clock comes from a clean generator, whatever noise and jitter the data have.
    Source clock;
    clock.frequency_hz = data.frequency_hz;
    clock.rise_time_ps = data.rise_time_ps;
    clock.kind = SignalKind::square;
    bench.sources = {data, clock};
    bench.samplers = {SamplerRoute::own_signal, SamplerRoute::disconnected};
    bench.triggers = {TriggerRoute::signal_2, TriggerRoute::signal_2};
}

} // namespace

void connect(TestBench& bench, TestConnection connection) {
    switch (connection) {
    case TestConnection::delivery: {
        const TestBench delivered;
        bench.sources = delivered.sources;
        bench.samplers = delivered.samplers;
        bench.triggers = delivered.triggers;
        return;
    }
    case TestConnection::eye_clean:
        return connect_eye(bench, random_data());
    case TestConnection::eye_jitter_noise:
        return connect_eye(bench, jittering_data());
    case TestConnection::eye_closing:
        return connect_eye(bench, closing_data());
    default:
        break;
    }
    bench.triggers = {TriggerRoute::signal_1, TriggerRoute::signal_1};
    bench.samplers = {SamplerRoute::disconnected, SamplerRoute::disconnected};
    const bool small = connection == TestConnection::sine_200mv_ch1 ||
                       connection == TestConnection::sine_200mv_ch2;
    bench.sources[0] = clean_sine(small ? small_mvpp : large_mvpp);
    if (connection != TestConnection::inputs_open) {
        const bool first = connection == TestConnection::sine_200mv_ch1 ||
                           connection == TestConnection::sine_1v_ch1;
        bench.samplers.at(first ? 0 : 1) = SamplerRoute::trigger_output;
    }
}

std::optional<TestConnection> connected(const TestBench& bench) {
    for (const TestConnection connection :
         {TestConnection::delivery, TestConnection::sine_200mv_ch1, TestConnection::sine_200mv_ch2,
          TestConnection::sine_1v_ch1, TestConnection::sine_1v_ch2, TestConnection::inputs_open,
          TestConnection::eye_clean, TestConnection::eye_jitter_noise,
          TestConnection::eye_closing}) {
        TestBench wanted = bench;
        connect(wanted, connection);
        if (wanted.sources == bench.sources && wanted.samplers == bench.samplers &&
            wanted.triggers == bench.triggers) {
            return connection;
        }
    }
    return std::nullopt;
}

} // namespace kv408::simulator
