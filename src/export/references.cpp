#include "export/references.h"

#include <algorithm>
#include <utility>

#include "export/csv_import.h"
#include "state/plot_geometry.h"

namespace kv408 {

std::vector<ReferencePoint> on_screen(const ExportedChannel& curve, const ReferenceScreen& screen) {
    constexpr double seconds_per_picosecond = 1e-12;
    const double columns_per_picosecond = screen.columns_per_second * seconds_per_picosecond;
    const double rows_per_mv = plot::division / screen.mv_per_division;
    std::vector<ReferencePoint> points;
    points.reserve(curve.mv.size());
    for (std::size_t point = 0; point < curve.mv.size(); ++point) {
        const double time = curve.first_time + static_cast<double>(point) * curve.interval;
        points.push_back({.column = 1.0 + (time - screen.first_time) * columns_per_picosecond,
                          .row = screen.zero_row - curve.mv[point] * rows_per_mv});
    }
    return points;
}

bool References::keep(std::size_t place, const ExportedSweep& sweep, std::string_view name) {
    const auto channel =
        std::find_if(sweep.channels.begin(), sweep.channels.end(),
                     [name](const ExportedChannel& candidate) { return candidate.name == name; });
    if (channel == sweep.channels.end()) {
        return false;
    }
    std::string title = "R";
    title += std::to_string(place + 1);
    title.append(" ").append(channel->name).append(" sweep ");
    title += std::to_string(sweep.number);
    places_.at(place) = {
        .name = std::move(title), .curve = *channel, .time_per_div = sweep.time_per_div};
    return true;
}

std::string References::load(std::size_t place, const std::string& name, std::string_view csv) {
    CsvImport read = csv_import(csv);
    if (!read.sweep) {
        return read.problem;
    }
    places_.at(place) = {.name = name,
                         .curve = std::move(read.sweep->channels.front()),
                         .time_per_div = read.sweep->time_per_div};
    return {};
}

void References::toggle(std::size_t place) {
    if (auto& reference = places_.at(place)) {
        reference->shown = !reference->shown;
    }
}

} // namespace kv408
