#include "export/references.h"

#include <algorithm>
#include <utility>

#include "export/computed_channel.h"
#include "export/number_text.h"
#include "export/quantity_text.h"
#include "export/time_per_div.h"
#include "state/channel.h"
#include "state/units.h"

namespace kv408 {

namespace {

constexpr std::string_view volt_unit = "V";

/// Volts per division as the panel writes them: "0.1V", "50mV".
std::string v_per_div_text(double volts) {
    constexpr double least_volts = 0.1;
    return volts >= least_volts ? number_text(volts) + "V"
                                : number_text(volts * millivolts_per_volt) + "mV";
}

/// `sweep` with the channel at `index` alone, or both lines of the envelope that begins there, as a
/// reference called `name`. What is no voltage keeps its scale.
Reference reference_of(std::string name, ExportedSweep sweep, std::size_t index) {
    const std::size_t lines = envelope_at(sweep, index) ? 2 : 1;
    const auto first = sweep.channels.begin() + static_cast<std::ptrdiff_t>(index);
    sweep.channels = std::vector(first, first + static_cast<std::ptrdiff_t>(lines));
    const ExportedChannel& kept = sweep.channels.front();
    ReferenceCurve curve{.channel = kept.computed()      ? kept.follows
                                    : kept.name == "CH2" ? ch2
                                                         : ch1,
                         .first_time = kept.first_time,
                         .interval = kept.interval,
                         .mv = kept.mv};
    if (lines > 1) {
        curve.lower = sweep.channels.back().mv;
    }
    if (kept.unit != volt_unit && kept.v_per_div > 0.0) {
        curve.scale = {.per_division = kept.v_per_div * millivolts_per_volt,
                       .position = kept.position};
    }
    return {.name = std::move(name),
            .sweep = std::move(sweep),
            .curve = std::make_shared<const ReferenceCurve>(std::move(curve))};
}

} // namespace

std::string reference_name(std::size_t place) {
    std::string text = "R";
    text += std::to_string(place + 1);
    return text;
}

std::string Reference::caption() const {
    std::string text = name;
    if (channel().v_per_div > 0.0) {
        text += "   " +
                (channel().unit == volt_unit ? v_per_div_text(channel().v_per_div)
                                             : scale_text(channel().v_per_div, channel().unit)) +
                "/div";
    }
    if (sweep.time_per_div > 0.0) {
        text += "   " + time_per_div_text(sweep.time_per_div) + "/div";
    }
    return text;
}

bool References::keep(std::size_t place, const ExportedSweep& sweep, std::string_view name) {
    const auto channel = std::find_if(
        sweep.channels.begin(), sweep.channels.end(),
        [name](const ExportedChannel& candidate) { return trace_of(candidate) == name; });
    if (channel == sweep.channels.end()) {
        return false;
    }
    std::string title = reference_name(place);
    title.append(" ").append(channel->computed() ? channel->formula : name).append(" sweep ");
    title += std::to_string(sweep.number);
    places_.at(place) = reference_of(std::move(title), sweep,
                                     static_cast<std::size_t>(channel - sweep.channels.begin()));
    return true;
}

void References::keep_loaded(std::size_t place, const std::string& name, ExportedSweep sweep,
                             std::size_t channel) {
    places_.at(place) = reference_of(reference_name(place) + " " + name, std::move(sweep), channel);
}

void References::toggle(std::size_t place) {
    if (auto& reference = places_.at(place)) {
        reference->shown = !reference->shown;
    }
}

} // namespace kv408
