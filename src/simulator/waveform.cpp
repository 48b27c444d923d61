#include "simulator/waveform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kv408::simulator {
namespace {

constexpr std::int64_t pattern_length = 127;

/// The maximum-length sequence of a 7-bit shift register with taps 7 and 6.
constexpr std::array<bool, pattern_length> make_pattern() {
    std::array<bool, pattern_length> bits{};
    unsigned shift_register = 0x7F;
    for (auto& bit : bits) {
        const unsigned fresh = ((shift_register >> 6U) ^ (shift_register >> 5U)) & 1U;
        bit = fresh != 0;
        shift_register = ((shift_register << 1U) | fresh) & 0x7FU;
    }
    return bits;
}

constexpr auto pattern = make_pattern();

bool is_high(std::int64_t bit) {
    const auto place = ((bit % pattern_length) + pattern_length) % pattern_length;
    return pattern[static_cast<std::size_t>(place)];
}

double pattern_bit(std::int64_t bit) {
    return is_high(bit) ? 1.0 : 0.0;
}

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

double data_shape(const Source& source, Phase phase) {
    const double width = edge_width(source);
    const double before = pattern_bit(phase.periods - 1);
    const double now = pattern_bit(phase.periods);
    const double after = pattern_bit(phase.periods + 1);
    return before + (now - before) * edge(phase.fraction, width) +
           (after - now) * edge(phase.fraction - 1.0, width);
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

bool data_turn(std::int64_t bit, bool rising) {
    return is_high(bit) == rising && is_high(bit - 1) != rising;
}

int longest_gap_of_data(bool rising) {
    int longest = 0;
    int gap = 0;
    // Twice round, for the gap over the pattern's end.
    for (std::int64_t bit = 0; bit < 2 * pattern_length; ++bit) {
        gap = data_turn(bit, rising) ? 1 : gap + 1;
        longest = std::max(longest, gap);
    }
    return longest;
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
