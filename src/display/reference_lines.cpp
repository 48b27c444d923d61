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

std::optional<ReferenceScreen> curve_screen(const FrontPanel& panel, const Channels& channels,
                                            const ReferenceCurve& curve) {
    auto screen = reference_screen(panel, channels, curve.channel);
    if (screen && curve.scale.per_division) {
        screen->mv_per_division = *curve.scale.per_division;
    }
    if (screen && curve.scale.position) {
        screen->zero_row = plot::centre_y - *curve.scale.position * plot::division;
    }
    return screen;
}

std::vector<std::span<const double>> lines_of(const ReferenceCurve& curve) {
    std::vector<std::span<const double>> lines = {curve.mv};
    if (!curve.lower.empty()) {
        lines.emplace_back(curve.lower);
    }
    return lines;
}

std::vector<ReferencePoint> on_screen(const ReferenceCurve& curve, std::span<const double> line,
                                      const ReferenceScreen& screen) {
    constexpr double picoseconds_per_second = 1e12;
    const double rows_per_mv = plot::division / screen.mv_per_division;
    std::vector<ReferencePoint> points;
    points.reserve(line.size());
    for (std::size_t point = 0; point < line.size(); ++point) {
        const double time = curve.first_time + static_cast<double>(point) * curve.interval;
        points.push_back(
            {.column = plot::first_point + (time - screen.first_time) * screen.columns_per_second /
                                               picoseconds_per_second,
             .row =
                 std::clamp(screen.zero_row - line[point] * rows_per_mv, highest_row, lowest_row)});
    }
    return points;
}

PlacedReference placed(const ReferenceLook& look, const PlotScale& scale) {
    PlacedReference result{.lines = {}, .colour = look.colour};
    for (const std::span<const double> line : lines_of(*look.curve)) {
        std::vector<Point>& points = result.lines.emplace_back();
        points.reserve(line.size());
        for (const ReferencePoint& point : on_screen(*look.curve, line, look.screen)) {
            points.push_back({scale.place(point.column), scale.place(point.row)});
        }
    }
    return result;
}

void draw_reference(const Canvas& canvas, const PlotScale& scale, const PlacedReference& reference,
                    Tiles* touched) {
    const Canvas within(canvas.surface(),
                        common(canvas.columns(), {scale.edge(1), scale.edge(plot::width - 1)}));
    const Brush brush(scale.line_width());
    const Columns columns = within.columns();
    for (const std::vector<Point>& points : reference.lines) {
        // Only what comes near to the columns: they may be a few of many.
        const auto beyond = [&](int column) {
            return std::partition_point(points.begin(), points.end(),
                                        [column](const Point& point) { return point.x < column; });
        };
        auto first = beyond(columns.left - brush.width());
        auto end = beyond(columns.right + brush.width());
        first -= first == points.begin() ? 0 : 1;
        end += end == points.end() ? 0 : 1;
        if (columns.empty() || end - first < 2) {
            continue;
        }
        draw_polyline(within, {first, end}, brush, reference.colour);
        for (auto point = first + 1; touched != nullptr && point != end; ++point) {
            const auto [left, right] = std::minmax((point - 1)->x, point->x);
            const auto [top, bottom] = std::minmax((point - 1)->y, point->y);
            const Rectangle covered =
                within.clipped({left - brush.before(), top - brush.before(), right + brush.width(),
                                bottom + brush.width()});
            if (covered.left < covered.right && covered.top < covered.bottom) {
                touched->add(covered);
            }
        }
    }
}

} // namespace kv408
