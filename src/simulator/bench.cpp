#include "simulator/bench.h"

namespace kv408::simulator {

void silence(Bench& bench) {
    bench.sampler_noise_codes = 0.0;
    for (Source& source : bench.sources) {
        source.noise_mv = 0.0;
        source.jitter_ps = 0.0;
    }
}

const Source* trigger_source(const Bench& bench, std::size_t input) {
    switch (bench.triggers.at(input)) {
    case TriggerRoute::signal_1:
        return &bench.sources.front();
    case TriggerRoute::signal_2:
        return &bench.sources.back();
    case TriggerRoute::disconnected:
        break;
    }
    return nullptr;
}

SamplerInput sampler_input(const Bench& bench, std::size_t channel, std::size_t selected_trigger) {
    switch (bench.samplers.at(channel)) {
    case SamplerRoute::own_signal:
        return {&bench.sources.at(channel), 1.0};
    case SamplerRoute::trigger_output:
        return {trigger_source(bench, selected_trigger), 1.0};
    case SamplerRoute::via_trigger:
        return {trigger_source(bench, channel), 0.5};
    case SamplerRoute::disconnected:
        break;
    }
    return {};
}

} // namespace kv408::simulator
