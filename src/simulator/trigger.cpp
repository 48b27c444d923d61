#include "simulator/trigger.h"

#include "state/rounding.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kv408::simulator {
namespace {

using std::chrono::nanoseconds;

// The simulation's signals start anew after so many seconds: this keeps the number of a period
// exact in a double for every frequency up to some terahertz.
constexpr nanoseconds repetition = std::chrono::seconds(1000);

/// Place, in periods from the middle of a rising edge, at which it passes `part` (0..1) of its
/// height.
double edge_place(double part, double width) {
    return (std::acos(1.0 - 2.0 * part) / std::numbers::pi - 0.5) * width;
}

/// Where in its period the source crosses the level: `part` of its height, 0..1 without ends.
double crossing_fraction(const Source& source, double part, bool rising) {
    double place = 0.0;
    if (source.kind == SignalKind::sine) {
        const double up = std::asin(2.0 * part - 1.0) / (2.0 * std::numbers::pi);
        place = rising ? up : 0.5 - up;
    } else {
        // Data change where a bit begins, in either direction.
        const double middle =
            rising || source.kind == SignalKind::random_data ? 0.0 : high_part(source);
        place = middle + edge_place(rising ? part : 1.0 - part, edge_width(source));
    }
    return moved({0, 0.0}, place).fraction;
}

} // namespace

TriggerEvent TriggerEvents::first_after(nanoseconds time, std::int64_t first_period) const {
    const double seconds = static_cast<double>((time % repetition).count()) * 1e-9;
    const auto period =
        static_cast<std::int64_t>(std::ceil(seconds * source_->frequency_hz - fraction_));
    return {source_, {std::max(period, first_period), fraction_}};
}

nanoseconds TriggerEvents::time_of(const TriggerEvent& event, nanoseconds near) const {
    const double seconds =
        (static_cast<double>(event.phase.periods) + event.phase.fraction) / source_->frequency_hz;
    return near - near % repetition +
           nanoseconds(static_cast<std::int64_t>(std::ceil(seconds * 1e9)));
}

std::optional<TriggerEvents> find_triggers(const Bench& bench, const TriggerSettings& settings) {
    const Source* const source = trigger_source(bench, settings.input);
    if (bench.faults.no_trigger || source == nullptr || !alternates(*source) ||
        1e6 / source->frequency_hz > static_cast<double>(settings.time_out_us)) {
        return std::nullopt;
    }
    const bool divided = bench.samplers.at(settings.input) == SamplerRoute::via_trigger;
    const double factor = divided ? 0.5 : 1.0;
    const double height = source->amplitude_mvpp * factor;
    const double lowest = source->offset_mv * factor - height / 2.0;
    const double above_lowest = static_cast<double>(settings.level_mv) - lowest;
    const double room_before = settings.rising ? above_lowest : height - above_lowest;
    const bool reached = above_lowest > 0.0 && above_lowest < height;
    if (!reached || room_before < static_cast<double>(settings.hysteresis_mv)) {
        return std::nullopt;
    }
    return TriggerEvents(*source,
                         crossing_fraction(*source, above_lowest / height, settings.rising));
}

Phase phase_at(const Source& source, const TriggerEvent& event) {
    if (&source == event.source) {
        return event.phase;
    }
    // This event's time in cycles is periods * frequency / trigger frequency. Remainder and error
    // of the product are exact, so locked signals stay locked however many periods have passed.
    const double trigger_frequency = event.source->frequency_hz;
    const auto periods = static_cast<double>(event.phase.periods);
    const double product = periods * source.frequency_hz;
    const double lost = std::fma(periods, source.frequency_hz, -product);
    const double remainder = std::fmod(product, trigger_frequency);
    const Phase start{
        static_cast<std::int64_t>(round_half_even((product - remainder) / trigger_frequency)),
        remainder / trigger_frequency};
    return moved(start, (lost + event.phase.fraction * source.frequency_hz) / trigger_frequency);
}

} // namespace kv408::simulator
