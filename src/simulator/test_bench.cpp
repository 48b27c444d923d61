#include "simulator/test_bench.h"

namespace kv408::simulator {

void silence(TestBench& bench) {
    bench.sampler_noise_codes = 0.0;
    for (Source& source : bench.sources) {
        source.noise_mv = 0.0;
        source.jitter_ps = 0.0;
        source.sine_jitter_ps = 0.0;
    }
}

Source clock_of(const Source& source) {
    constexpr double clock_mvpp = 400.0;
    Source clock = source;
    if (source.kind != SignalKind::none) {
        clock.kind = SignalKind::square;
    }
    clock.amplitude_mvpp = clock_mvpp;
    clock.offset_mv = 0.0;
    clock.noise_mv = 0.0;
    return clock;
}

namespace {

/// The signal of `source` without the cable to the sampler.
InputSignal at_trigger(const Source& source) {
    InputSignal input{&source, source};
    input.signal.cable_ps = 0.0;
    return input;
}

} // namespace

InputSignal trigger_signal(const TestBench& bench, std::size_t input) {
    const Source& first = bench.sources.front();
    const Source& second = bench.sources.back();
    switch (bench.triggers.at(input)) {
    case TriggerRoute::signal_1:
        return at_trigger(first);
    case TriggerRoute::signal_2:
        return at_trigger(second);
    case TriggerRoute::clock_1:
        return {&first, clock_of(first)};
    case TriggerRoute::clock_2:
        return {&second, clock_of(second)};
    case TriggerRoute::disconnected:
        break;
    }
    return {};
}

InputSignal sampler_input(const TestBench& bench, std::size_t channel,
                          std::size_t selected_trigger) {
    constexpr double passed_on = 0.5;
    InputSignal input;
    switch (bench.samplers.at(channel)) {
    case SamplerRoute::own_signal:
        input = {&bench.sources.at(channel), bench.sources.at(channel)};
        break;
    case SamplerRoute::trigger_output:
        input = trigger_signal(bench, selected_trigger);
        break;
    case SamplerRoute::via_trigger:
        input = trigger_signal(bench, channel);
        input.factor = passed_on;
        break;
    case SamplerRoute::disconnected:
        break;
    }
    return input;
}

} // namespace kv408::simulator
