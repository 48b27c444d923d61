#include "simulator/waveform.h"

#include "simulator/random_data.h"
#include "state/rounding.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kv408::simulator {
namespace {

/// A rising edge from 0 to 1 of raised-cosine shape, its middle at 0, `width` long.
double edge(double place, double width) {
    if (place <= -width / 2.0 && width > 0.0) {
        return 0.0;
    }
    if (place >= width / 2.0) {
        return 1.0;
    }
    if (width <= 0.0) {
        return 0.0;
    }
    return (1.0 - std::cos(std::numbers::pi * (place / width + 0.5))) / 2.0;
}

double pulse_shape(const Source& source, double fraction) {
    const double width = edge_width(source);
    return edge(fraction, width) - edge(fraction - high_part(source), width) +
           edge(fraction - 1.0, width);
}

/// What a cable of one pole with the time constant `pole` makes of such an edge, at `place`.
double edge_after_cable(double place, double width, double pole) {
    const double since = place + width / 2.0;
    if (since <= 0.0) {
        return 0.0;
    }
    if (width <= 0.0) {
        return 1.0 - std::exp(-since / pole);
    }
    // The pole's answer to (1 - cos(turn * since)) / 2, which begins at 0; after it, to 1.
    const double turn = std::numbers::pi / width;
    const double lag = turn * pole;
    const double share = 1.0 / (2.0 * (1.0 + lag * lag));
    const auto within = [&](double time) {
        return 0.5 - share * (std::cos(turn * time) + lag * std::sin(turn * time)) -
               share * lag * lag * std::exp(-time / pole);
    };
    return since < width ? within(since)
                         : 1.0 - (1.0 - within(width)) * std::exp(-(since - width) / pole);
}

double data_shape(const Source& source, Phase phase) {
    const double width = edge_width(source);
    const double pole = std::clamp(source.cable_ps * 1e-12 * source.frequency_hz, 0.0, 3.0);
    // What a bit leaves behind a cable after twenty time constants is below the converter's steps.
    const int remembered = pole > 0.0 ? static_cast<int>(std::ceil(20.0 * pole)) + 1 : 0;
    RandomBits bits(source.pattern_bits, phase.periods - remembered - 1);
    bool before = bits.take();
    double value = before ? 1.0 : 0.0;
    for (int bit = -remembered; bit <= 1; ++bit) {
        const bool now = bits.take();
        if (now != before) {
            const double place = phase.fraction - bit - data_edge_delay(source, now);
            const double step =
                pole > 0.0 ? edge_after_cable(place, width, pole) : edge(place, width);
            value += now ? step : -step;
        }
        before = now;
    }
    return value;
}

} // namespace

Phase moved(Phase phase, double periods) {
    const double sum = phase.fraction + periods;
    const double whole = std::floor(sum);
    // A tiny negative sum rounds up to a fraction of 1, which is the start of the next period.
    const double fraction = sum - whole;
    const std::int64_t carry = fraction >= 1.0 ? 1 : 0;
    return {phase.periods + static_cast<std::int64_t>(whole) + carry, carry != 0 ? 0.0 : fraction};
}

double edge_width(const Source& source) {
    // A raised cosine is between 10 % and 90 % for this part of its length.
    const double inner_part = 1.0 - 2.0 * std::acos(0.8) / std::numbers::pi;
    const double width = source.rise_time_ps * 1e-12 * source.frequency_hz / inner_part;
    const double high = high_part(source);
    const double limit = source.kind == SignalKind::random_data ? 1.0 : std::min(high, 1.0 - high);
    return width > 0.0 ? std::min(width, limit) : 0.0;
}

double high_part(const Source& source) {
    if (source.kind != SignalKind::pulse || std::isnan(source.duty)) {
        return 0.5;
    }
    return std::clamp(source.duty, 0.001, 0.999);
}

std::int64_t edge_at(const Source& source, Phase phase) {
    const double high = high_part(source);
    const bool data = source.kind == SignalKind::random_data;
    const std::int64_t first = 2 * phase.periods;
    if (phase.fraction < high / 2.0 || (data && phase.fraction < 0.5)) {
        return first;
    }
    return data || phase.fraction >= (1.0 + high) / 2.0 ? first + 2 : first + 1;
}

double data_edge_delay(const Source& source, bool rising) {
    const double longer = source.distortion_ps * 1e-12 * source.frequency_hz;
    const double room = 1.0 - edge_width(source);
    const double half = std::clamp(longer, -room, room) / 2.0;
    return rising ? -half : half;
}

Phase in_periods_of(double frequency_hz, Phase phase, double phase_hz) {
    // The phase's time in cycles is periods * frequency / its frequency. Remainder and error
    // of the product are exact, so locked signals stay locked however many periods have passed.
    const auto periods = static_cast<double>(phase.periods);
    const double cycles = periods * frequency_hz;
    const double lost = std::fma(periods, frequency_hz, -cycles);
    const double remainder = std::fmod(cycles, phase_hz);
    const Phase start{static_cast<std::int64_t>(round_half_even((cycles - remainder) / phase_hz)),
                      remainder / phase_hz};
    return moved(start, (lost + phase.fraction * frequency_hz) / phase_hz);
}

double sine_jitter_at(const Source& source, Phase phase) {
    if (!(source.sine_jitter_ps > 0.0) || !(source.sine_jitter_hz > 0.0)) {
        return 0.0;
    }
    const Phase turn = in_periods_of(source.sine_jitter_hz, phase, source.frequency_hz);
    return source.sine_jitter_ps * std::sin(2.0 * std::numbers::pi * turn.fraction);
}

bool alternates(const Source& source) {
    return source.kind != SignalKind::none && source.amplitude_mvpp > 0.0 &&
           std::isfinite(source.amplitude_mvpp) && source.frequency_hz > 0.0 &&
           std::isfinite(source.frequency_hz);
}

double value_mv(const Source& source, Phase phase) {
    if (source.kind == SignalKind::none) {
        return 0.0;
    }
    if (!alternates(source)) {
        return source.offset_mv;
    }
    double shape = 0.0; // -0.5..0.5
    switch (source.kind) {
    case SignalKind::sine:
        shape = std::sin(2.0 * std::numbers::pi * phase.fraction) / 2.0;
        break;
    case SignalKind::square:
    case SignalKind::pulse:
        shape = pulse_shape(source, phase.fraction) - 0.5;
        break;
    case SignalKind::random_data:
        shape = data_shape(source, phase) - 0.5;
        break;
    case SignalKind::none:
        break;
    }
    return source.offset_mv + source.amplitude_mvpp * shape;
}

} // namespace kv408::simulator
