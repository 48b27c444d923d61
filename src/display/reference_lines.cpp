#include "display/reference_lines.h"

#include <algorithm>

#include "display/lines.h"
#include "display/trace.h"
#include "panel/delay_text.h"
#include "panel/time_base.h"
#include "state/plot_geometry.h"
#include "state/samples.h"
#include "state/trace_mapping.h"

namespace kv408 {

std::optional<ReferenceScreen> reference_screen(const FrontPanel& panel, const Channels& channels,
                                                Channel channel) {
    const ChannelState& state = channels.at(channel);
    const TimeBaseRow* const row = selected_time_base(panel);
    if (row == nullptr) {
        return std::nullopt;
    }
    // A pass begins at the trigger, its first point one step after it.
    const double first_time =
        row->pointmode ? row->tbresolution : delay_of(panel.channel.at(channel).psofset, state);
    return ReferenceScreen{.mv_per_division = state.mv_per_division,
                           .zero_row = trace_row(state, zero_volt_code),
                           .columns_per_second = row->samplerate,
                           .first_time = first_time};
}

std::vector<ReferencePoint> on_screen(const ReferenceCurve& curve, const ReferenceScreen& screen) {
    constexpr double picoseconds_per_second = 1e12;
    const double rows_per_mv = plot::division / screen.mv_per_division;
    std::vector<ReferencePoint> points;
    points.reserve(curve.mv.size());
    for (std::size_t point = 0; point < curve.mv.size(); ++point) {
        const double time = curve.first_time + static_cast<double>(point) * curve.interval;
        points.push_back(
            {.column = plot::first_point + (time - screen.first_time) * screen.columns_per_second /
                                               picoseconds_per_second,
             .row = std::clamp(screen.zero_row - curve.mv[point] * rows_per_mv, highest_row,
                               lowest_row)});
    }
    return points;
}

void draw_reference(Surface& surface, const PlotScale& scale, const ReferenceLook& look) {
    std::vector<Point> placed;
    placed.reserve(look.curve->mv.size());
    for (const ReferencePoint& point : on_screen(*look.curve, look.screen)) {
        placed.push_back({scale.place(point.column), scale.place(point.row)});
    }
    const Canvas within(surface, {scale.edge(1), scale.edge(plot::width - 1)});
    draw_polyline(within, placed, Brush(scale.line_width()), look.colour);
}

} // namespace kv408
