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

} // namespace

void connect(TestBench& bench, TestConnection connection) {
    if (connection == TestConnection::delivery) {
        const TestBench delivered;
        bench.sources = delivered.sources;
        bench.samplers = delivered.samplers;
        bench.triggers = delivered.triggers;
        return;
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
          TestConnection::sine_1v_ch1, TestConnection::sine_1v_ch2, TestConnection::inputs_open}) {
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
