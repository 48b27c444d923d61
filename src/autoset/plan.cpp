#include "autoset/plan.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "state/engineering_format.h"
#include "state/units.h"

namespace kv408 {
namespace {

/// `value` with three digits, a blank, and prefix and unit: "10.0 MHz".
std::string quantity_text(double value, std::string_view unit) {
    constexpr int digits = 3;
    const std::string number = engformat(value, digits);
    const std::size_t prefix = std::min(number.find_first_of("pnumkMG"), number.size());
    std::string text = number.substr(0, prefix);
    return text.append(1, ' ').append(number, prefix).append(unit);
}

SignalLook upside_down(const SignalLook& look) {
    SignalLook turned = look;
    turned.low = -look.high;
    turned.high = -look.low;
    return turned;
}

/// The period that the time base is to show: that of the source, or else of the other channel.
std::optional<double> shown_period(const PlanOf& basis) {
    for (const Channel channel : {basis.source, other(basis.source)}) {
        if (const SignalLook& look = basis.found.at(channel).look; look.alive && look.period) {
            return look.period;
        }
    }
    return std::nullopt;
}

} // namespace

bool Plan::same_scales(const Plan& other) const {
    return vertical[ch1].vdiv == other.vertical[ch1].vdiv &&
           vertical[ch2].vdiv == other.vertical[ch2].vdiv && time.time_base == other.time.time_base;
}

Plan plan_of(const PlanOf& basis) {
    constexpr double whole_height = 6.5; // divisions
    constexpr double middle_of_half = 2.0;
    Plan plan;
    const bool both = basis.found[ch1].look.alive && basis.found[ch2].look.alive;
    for (const Channel channel : both_channels) {
        const bool inverted = basis.panel.channel.at(channel).invert.checked();
        const SignalLook& look = basis.found.at(channel).look;
        if (!look.alive) {
            continue;
        }
        const Place place = both
                                ? Place{.centre = channel == ch1 ? middle_of_half : -middle_of_half,
                                        .height = whole_height / 2.0}
                                : Place{.centre = 0.0, .height = whole_height};
        plan.vertical.at(channel) = fit_vertical(inverted ? upside_down(look) : look, place);
    }
    const SignalLook& own = basis.found.at(basis.source).look;
    if (const auto period = shown_period(basis)) {
        plan.time = fit_period(*period);
    } else {
        const SignalLook& beside = basis.found.at(other(basis.source)).look;
        const std::optional<double> edge = own.edge ? own.edge : beside.edge;
        plan.time = edge ? fit_edge(*edge) : TimeFit{.time_base = std::string(basis.time_base)};
    }
    plan.level = {.wheel = basis.level_wheel};
    if (own.alive) {
        plan.level = fit_level(own, basis.channels.at(basis.source).vtfactor);
    }
    plan.timeout = basis.timeout;
    return plan;
}

std::string name_of_source(Channel source) {
    return "TRIG" + std::to_string(number_of(source));
}

std::string words_of(Channel channel, const FoundSignal& found, Channel source) {
    const auto& [look, on] = found;
    std::string words = channel_label(channel);
    if (!on) {
        return words + " no signal";
    }
    if (look.period) {
        words.append(1, ' ').append(quantity_text(picoseconds_per_second / *look.period, "Hz"));
    } else {
        words.append(" no period");
    }
    words.append(1, ' ').append(quantity_text(look.height() / millivolts_per_volt, "Vpp"));
    words += look.clipped ? " (clipped)" : "";
    return channel == source ? words + " on " + name_of_source(source) : words;
}

} // namespace kv408
