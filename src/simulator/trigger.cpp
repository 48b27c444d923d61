#include "simulator/trigger.h"

#include "simulator/random_data.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kv408::simulator {
namespace {

using std::chrono::nanoseconds;

// The simulation's signals start anew after this many seconds: this keeps the number of a period
// exact in a double for every frequency up to some terahertz.
constexpr nanoseconds repetition = std::chrono::seconds(1000);

/// Place, in periods from the middle of a rising edge, at which it passes `part` (0..1) of its
/// height.
double edge_place(double part, double width) {
    return (std::acos(1.0 - 2.0 * part) / std::numbers::pi - 0.5) * width;
}

/// Where `signal` is crossed, periods from the start of one. Negative where the edge that rises at
/// the start of a period is crossed before its middle.
double crossing_place(const Source& signal, const Crossing& crossing) {
    const bool rising = crossing.rising;
    if (signal.kind == SignalKind::sine) {
        const double up = std::asin(2.0 * crossing.part - 1.0) / (2.0 * std::numbers::pi);
        return rising ? up : 0.5 - up;
    }
    // Data change where a bit begins, in either direction.
    const double middle = signal.kind == SignalKind::random_data ? data_edge_delay(signal, rising)
                          : rising                               ? 0.0
                                                                 : high_part(signal);
    return middle + edge_place(rising ? crossing.part : 1.0 - crossing.part, edge_width(signal));
}

/// The longest time between two crossings, seconds.
double longest_gap_of(const Source& signal, bool rising) {
    const int periods = signal.kind == SignalKind::random_data
                            ? longest_gap_of_data(signal.pattern_bits, rising)
                            : 1;
    return periods / signal.frequency_hz;
}

} // namespace

TriggerEvents::TriggerEvents(const Source& generator, const Source& signal,
                             const Crossing& crossing)
    : generator_(&generator), signal_(signal), crossing_(crossing),
      place_(moved({0, 0.0}, crossing_place(signal, crossing))) {}

TriggerEvent TriggerEvents::first_after(nanoseconds time) const {
    const double seconds = static_cast<double>((time % repetition).count()) * 1e-9;
    return event_in(
        static_cast<std::int64_t>(std::ceil(seconds * signal_.frequency_hz - place_.fraction)));
}

TriggerEvent TriggerEvents::next(const TriggerEvent& event) const {
    return event_in(event.phase.periods + 1);
}

TriggerEvent TriggerEvents::event_in(std::int64_t period) const {
    if (signal_.kind == SignalKind::random_data) {
        while (!data_turn(signal_.pattern_bits, period - place_.periods, crossing_.rising)) {
            ++period;
        }
    }
    TriggerEvent event;
    event.generator = generator_;
    event.phase = {period, place_.fraction};
    event.edge = edge_at(signal_, event.phase);
    return event;
}

void TriggerEvents::disturb(TriggerEvent& event, Noise& noise) const {
    if (signal_.jitter_ps > 0.0) {
        event.jitter_ps = signal_.jitter_ps * noise.gaussian();
    }
    event.jitter_ps += sine_jitter_at(signal_, event.phase);
    event.late_ps = event.jitter_ps;
    if (signal_.noise_mv > 0.0) {
        // With the noise added the signal itself crosses at another height.
        Crossing with_noise = crossing_;
        with_noise.part -= signal_.noise_mv * noise.gaussian() / signal_.amplitude_mvpp;
        with_noise.part = std::clamp(with_noise.part, 0.0, 1.0);
        const double periods =
            crossing_place(signal_, with_noise) - crossing_place(signal_, crossing_);
        event.late_ps += periods / signal_.frequency_hz * 1e12;
    }
}

nanoseconds TriggerEvents::time_of(const TriggerEvent& event, nanoseconds near) const {
    const double seconds =
        (static_cast<double>(event.phase.periods) + event.phase.fraction) / signal_.frequency_hz;
    return near - near % repetition +
           nanoseconds(static_cast<std::int64_t>(std::ceil(seconds * 1e9)));
}

std::optional<TriggerEvents> find_triggers(const TestBench& bench,
                                           const TriggerSettings& settings) {
    const InputSignal input = trigger_signal(bench, settings.input);
    const Source& signal = input.signal;
    if (bench.faults.no_trigger || input.generator == nullptr || !alternates(signal) ||
        longest_gap_of(signal, settings.rising) * 1e6 > static_cast<double>(settings.time_out_us)) {
        return std::nullopt;
    }
    const bool divided = bench.samplers.at(settings.input) == SamplerRoute::via_trigger;
    const double factor = divided ? 0.5 : 1.0;
    const double height = signal.amplitude_mvpp * factor;
    const double lowest = signal.offset_mv * factor - height / 2.0;
    const double above_lowest = static_cast<double>(settings.level_mv) - lowest;
    const double room_before = settings.rising ? above_lowest : height - above_lowest;
    const bool reached = above_lowest > 0.0 && above_lowest < height;
    if (!reached || room_before < static_cast<double>(settings.hysteresis_mv)) {
        return std::nullopt;
    }
    return TriggerEvents(*input.generator, signal,
                         {.part = above_lowest / height, .rising = settings.rising});
}

Phase phase_at(const Source& generator, const TriggerEvent& event) {
    if (&generator == event.generator) {
        return event.phase;
    }
    return in_periods_of(generator.frequency_hz, event.phase, event.generator->frequency_hz);
}

} // namespace kv408::simulator
