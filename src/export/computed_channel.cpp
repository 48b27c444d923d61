#include "export/computed_channel.h"

#include <string_view>
#include <utility>

#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::string_view computed_mark = "MATH";
constexpr std::string_view highest_mark = "MAX";
constexpr std::string_view lowest_mark = "MIN";

} // namespace

std::string maths_name(std::size_t place) {
    return std::string(computed_mark) + std::to_string(place + 1);
}

std::string trace_of(const ExportedChannel& channel) {
    const std::string& name = channel.name;
    const bool line = name.starts_with(computed_mark) &&
                      (name.ends_with(highest_mark) || name.ends_with(lowest_mark));
    return line ? name.substr(0, name.size() - highest_mark.size()) : name;
}

bool envelope_at(const ExportedSweep& sweep, std::size_t index) {
    if (index + 1 >= sweep.channels.size()) {
        return false;
    }
    const ExportedChannel& one = sweep.channels[index];
    const ExportedChannel& other = sweep.channels[index + 1];
    return one.name.ends_with(highest_mark) && other.name.ends_with(lowest_mark) &&
           trace_of(one) == trace_of(other) && one.mv.size() == other.mv.size();
}

void add_computed(const MathsTrace& trace, const std::string& name, double per_division,
                  double position, const Sweep& sweep, ExportedSweep& exported) {
    const auto add = [&](std::string_view line, const std::vector<double>& values) {
        ExportedChannel channel{.name = name + std::string(line),
                                .first_time = trace.first_time,
                                .interval = trace.time_per_point,
                                .mv = {},
                                .v_per_div = per_division,
                                .position = position,
                                .delay = sweep.channel.at(trace.definition.a)->delay,
                                .unit = std::string(unit_name(trace.definition.unit())),
                                .formula = trace.definition.label(),
                                .follows = trace.definition.a};
        channel.mv.reserve(values.size());
        for (const double value : values) {
            channel.mv.push_back(value * millivolts_per_volt);
        }
        exported.channels.push_back(std::move(channel));
    };
    if (trace.lowest.empty()) {
        add({}, trace.values);
    } else {
        add(highest_mark, trace.values);
        add(lowest_mark, trace.lowest);
    }
}

} // namespace kv408
