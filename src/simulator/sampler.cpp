#include "simulator/sampler.h"

#include "state/rounding.h"

#include <algorithm>

namespace kv408::simulator {
namespace {

constexpr std::int32_t largest_code = 4095;
constexpr double record_unity = 10000.0;
constexpr double fast_noise_factor = 2.0;

double record_factor(const Flash& flash, std::size_t index) {
    return static_cast<double>(flash.record(static_cast<std::uint16_t>(index))) / record_unity;
}

} // namespace

Sampler::Channel Sampler::prepare(std::size_t channel, const Settings& settings, bool fast) const {
    const std::size_t range = settings.range.at(channel);
    const std::size_t place = 2 * channel + range;
    const auto& errors = bench_.errors;
    const auto record_offset = flash_.record(static_cast<std::uint16_t>(record_offsets + place));
    Channel prepared;
    prepared.input = sampler_input(bench_, channel, settings.trigger.input);
    prepared.codes_per_mv = codes_per_mv.at(range) * errors.gain.at(channel).at(range) *
                            record_factor(flash_, record_gains + place);
    // The record's 2048 and the converter's 2048 for 0 V cancel.
    prepared.zero_code = errors.offset.at(channel).at(range) + static_cast<double>(record_offset);
    prepared.delay_scale = errors.time_scale * record_factor(flash_, record_time_scale);
    prepared.noise_codes = bench_.sampler_noise_codes * (fast ? fast_noise_factor : 1.0);
    return prepared;
}

std::int32_t Sampler::convert(const Channel& channel, const TriggerEvent& event, double delay_ps) {
    const Source& signal = channel.input.signal;
    double millivolts = 0.0;
    // A generator that is off emits no noise either.
    if (channel.input.generator != nullptr && signal.kind != SignalKind::none) {
        Phase phase;
        if (alternates(signal)) {
            phase = sampled_phase(channel.input, event, delay_ps * channel.delay_scale);
        }
        millivolts = value_mv(signal, phase);
        if (signal.noise_mv > 0.0) {
            millivolts += signal.noise_mv * noise_.gaussian();
        }
    }
    double code = channel.zero_code + millivolts * channel.input.factor * channel.codes_per_mv;
    if (channel.noise_codes > 0.0) {
        code += channel.noise_codes * noise_.gaussian();
    }
    return std::clamp(round_to_int32(code), std::int32_t{0}, largest_code);
}

Phase Sampler::sampled_phase(const InputSignal& input, const TriggerEvent& event,
                             double picoseconds) {
    const Source& signal = input.signal;
    const double periods_per_ps = 1e-12 * signal.frequency_hz;
    const Phase undisturbed =
        moved(phase_at(*input.generator, event), picoseconds * periods_per_ps);
    double late_ps = event.late_ps;
    if (signal.jitter_ps > 0.0 || signal.sine_jitter_ps > 0.0) {
        const double random_ps =
            signal.jitter_ps > 0.0 ? signal.jitter_ps * noise_.gaussian() : 0.0;
        const double own_ps = random_ps + sine_jitter_at(signal, undisturbed);
        // The edge that triggered delayed the trigger, and is itself delayed as much.
        const bool triggered =
            input.generator == event.generator && edge_at(signal, undisturbed) == event.edge;
        late_ps -= triggered ? event.jitter_ps : own_ps;
    }
    return moved(undisturbed, late_ps * periods_per_ps);
}

} // namespace kv408::simulator
