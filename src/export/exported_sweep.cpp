#include "export/exported_sweep.h"

#include <algorithm>

#include "export/date_text.h"
#include "export/number_text.h"
#include "state/plot_geometry.h"
#include "state/units.h"

namespace kv408 {
namespace {

std::string trigger_text(const TriggerSetting& trigger) {
    std::string text = trigger.source == ch1 ? "TRIG1" : "TRIG2";
    text += trigger.positive ? ", positive edge, " : ", negative edge, ";
    text += number_text(trigger.level_mv / millivolts_per_volt) + " V, hysteresis ";
    text += std::to_string(trigger.hysteresis) + ", time-out ";
    return text + std::to_string(trigger.timeout) + " us";
}

ExportedChannel exported_channel(const ChannelSweep& sweep, std::size_t channel, std::size_t most) {
    const auto last = static_cast<std::ptrdiff_t>(std::min(most, sweep.mv.size()));
    return {.name = "CH" + std::to_string(channel + 1),
            .first_time = sweep.first_time,
            .interval = sweep.time_per_point,
            .mv = {sweep.mv.begin(), sweep.mv.begin() + last},
            .v_per_div = sweep.mv_per_division / millivolts_per_volt,
            .position = sweep.position,
            .delay = sweep.delay};
}

} // namespace

double ExportedChannel::time(std::size_t index) const {
    // Divided last: the picoseconds are whole numbers.
    return (first_time + static_cast<double>(index) * interval) / picoseconds_per_second;
}

double ExportedChannel::volts(std::size_t index) const {
    return mv.at(index) / millivolts_per_volt;
}

bool ExportedSweep::same_times() const {
    return std::all_of(channels.begin(), channels.end(), [this](const ExportedChannel& channel) {
        const ExportedChannel& first = channels.front();
        return channel.first_time == first.first_time && channel.interval == first.interval &&
               channel.mv.size() == first.mv.size();
    });
}

ExportedSweep exported_sweep(const Sweep& sweep, const std::array<bool, 2>& on,
                             const ExportOrigin& origin, std::size_t most) {
    ExportedSweep exported;
    exported.version = origin.version;
    exported.serial = origin.serial;
    exported.date = date_text(sweep.time, origin.utc_offset);
    exported.mode = sweep.mode == SweepMode::block ? "block" : "point";
    exported.number = sweep.number;
    for (std::size_t channel = 0; channel < on.size(); ++channel) {
        if (!on.at(channel) || !sweep.came.at(channel)) {
            continue;
        }
        const ChannelSweep& part = *sweep.channel.at(channel);
        exported.time_per_div = plot::division / part.columns_per_second * picoseconds_per_second;
        exported.trigger = trigger_text(part.trigger);
        exported.averaged = part.averaged;
        exported.channels.push_back(exported_channel(part, channel, most));
    }
    return exported;
}

} // namespace kv408
