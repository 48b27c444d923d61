#include "display/plot_marks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/samples.h"

namespace kv408 {
namespace {

/// The part of `mark` within the plot (Liang and Barsky's way); nothing where there is none.
std::optional<PlotMark> within_plot(const PlotMark& mark) {
    const double right = mark.to_x - mark.from_x;
    const double down = mark.to_y - mark.from_y;
    double begin = 0.0;
    double end = 1.0;
    struct Side {
        double outward; ///< how far the line goes out of it
        double room;    ///< how far inside of it the line begins
    };
    for (const auto& [outward, room] :
         std::array{Side{-right, mark.from_x}, Side{right, plot::width - 1.0 - mark.from_x},
                    Side{-down, mark.from_y}, Side{down, plot::height - 1.0 - mark.from_y}}) {
        if (outward == 0.0 && room < 0.0) {
            return std::nullopt;
        }
        if (outward > 0.0) {
            end = std::min(end, room / outward);
        } else if (outward < 0.0) {
            begin = std::max(begin, room / outward);
        }
    }
    if (!(begin <= end)) {
        return std::nullopt;
    }
    return PlotMark{mark.from_x + begin * right, mark.from_y + begin * down,
                    mark.from_x + end * right, mark.from_y + end * down, mark.dotted};
}

} // namespace

void add_marks(const DensityMarks& marks, const DensityScreen& screen,
               std::vector<PlotMark>& lines) {
    const double code_height = marks.with.conversion.atten * marks.with.conversion.vtfactor;
    const auto column = [&](const MaskPoint& place) {
        return screen.first_column + place.x * screen.columns_per_point;
    };
    const auto row = [&](const MaskPoint& place) {
        const double codes = level_at(marks.with, place.y) / code_height * screen.codes_per_code;
        return (screen.centre_code - zero_volt_code - codes) * screen.rows_per_code +
               double{plot::centre_y};
    };
    for (const DensityMark& mark : marks.lines) {
        const auto line = within_plot(
            {column(mark.from), row(mark.from), column(mark.to), row(mark.to), mark.dotted});
        if (line) {
            lines.push_back(*line);
        }
    }
}

void draw_marks(const UnitPainter& painter, const PlotMarks& marks) {
    for (const PlotMark& mark : marks.lines) {
        const auto [left, right] =
            std::minmax({round_to_int32(mark.from_x), round_to_int32(mark.to_x)});
        const auto [top, bottom] =
            std::minmax({round_to_int32(mark.from_y), round_to_int32(mark.to_y)});
        const PenStyle style = mark.dotted ? PenStyle::dotted : PenStyle::solid;
        if (top == bottom) {
            painter.draw_row(top, left, right + 1, marks.colour, style);
        } else if (left == right) {
            painter.draw_column(left, top, bottom + 1, marks.colour, style);
        } else {
            painter.draw_slant({mark.from_x, mark.from_y}, {mark.to_x, mark.to_y}, marks.colour);
        }
    }
}

} // namespace kv408
