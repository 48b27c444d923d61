#include "display/generation.h"

#include <algorithm>
#include <cstdlib>

namespace kv408 {
namespace {

/// Columns beside the plot from which the widest brush still reaches into it.
constexpr int margin = static_cast<int>(PlotScale::largest);

} // namespace

Generation::Generation() : brush_(1) {
    rescale(PlotScale());
}

void Generation::rescale(const PlotScale& scale) {
    if (scale == scale_ && !runs_.empty()) {
        return;
    }
    scale_ = scale;
    brush_ = Brush(scale.line_width());
    thin_.assign(static_cast<std::size_t>(scale.width() + 2 * margin), no_rows);
    runs_.assign(static_cast<std::size_t>(scale.width()), RowRun{});
    place_points(0, plot::points - 1);
    if (is_uniform()) {
        cover(plot::first_point, plot::last_point);
    }
}

int Generation::breaks_between(int first, int last) const {
    int count = 0;
    for (int index = std::max(first, plot::first_point + 1);
         index <= std::min(last, plot::last_point); ++index) {
        count += std::int64_t{point(index).x} != std::int64_t{point(index - 1).x} + 1 ? 1 : 0;
    }
    return count;
}

void Generation::place_points(int first, int last) {
    for (int index = first; index <= last; ++index) {
        const TracePoint at = point(index);
        placed_[static_cast<std::size_t>(index)] = {scale_.place(at.x), scale_.place(at.y)};
    }
}

void Generation::set_points(int first, std::span<const TracePoint> points) {
    const int last = first + static_cast<int>(points.size()) - 1;
    const bool was_uniform = is_uniform();
    breaks_ -= breaks_between(first, last + 1);
    std::copy(points.begin(), points.end(), points_.begin() + first);
    breaks_ += breaks_between(first, last + 1);
    place_points(first, last);
    first_set_ = was_uniform ? std::min(first_set_, first - 1) : plot::first_point;
    last_set_ = was_uniform ? std::max(last_set_, last + 1) : plot::last_point;
}

void Generation::settle() {
    if (first_set_ <= last_set_ && is_uniform()) {
        cover(first_set_, last_set_);
        first_set_ = plot::points;
        last_set_ = 0;
    }
}

Columns Generation::columns() const {
    return {placed(plot::first_point).x - brush_.before(),
            placed(plot::last_point).x - brush_.before() + brush_.width()};
}

RowRun& Generation::thin(int column) {
    return thin_[static_cast<std::size_t>(column + margin)];
}

/// Finds anew what the line covers near the points from `first` to `last`.
void Generation::cover(int first, int last) {
    first = std::max(first, plot::first_point);
    last = std::min(last, plot::last_point);
    const Columns all{-margin, scale_.width() + margin};
    // All points may have moved sideways together.
    const bool whole = first == plot::first_point && last == plot::last_point;
    const Columns part = whole ? all : common(all, {placed(first).x, placed(last).x + 1});
    if (part.empty()) {
        return;
    }
    std::fill(&thin(part.left), &thin(part.left) + (part.right - part.left), no_rows);
    const int end = std::min(last + 1, plot::last_point);
    for (int index = std::max(first - 1, plot::first_point); index < end; ++index) {
        draw_thin(placed(index), placed(index + 1), part);
    }
    const int reach = brush_.width();
    widen(common({0, scale_.width()}, {part.left - reach, part.right + reach}));
}

/// Adds the pixels of `columns` that the thin line from `from` to `to`, which lies right of it, has
/// (display/lines.h).
void Generation::draw_thin(Point from, Point to, Columns columns) {
    const int wide = to.x - from.x;
    const int high = std::abs(to.y - from.y);
    const int way = to.y < from.y ? -1 : 1;
    const Columns part = common(columns, {from.x, to.x + 1});
    for (int column = part.left; column < part.right; ++column) {
        const int across = column - from.x;
        int near = 0; // rows from the line's first one
        int far = 0;
        if (wide >= high) {
            if (column == to.x) {
                continue;
            }
            // The upper row of two that are equally near.
            near = (2 * across * high + wide - (way > 0 ? 1 : 0)) / (2 * wide);
            far = near;
        } else {
            // The left column of two that are equally near.
            near = across == 0 ? 0 : (2 * across - 1) * high / (2 * wide) + 1;
            far = std::min((2 * across + 1) * high / (2 * wide), high - 1);
            if (near > far) {
                continue;
            }
        }
        const int first = from.y + way * near;
        const int last = from.y + way * far;
        extend(thin(column), std::min(first, last), std::max(first, last) + 1);
    }
}

/// Finds what the brush covers in `columns` of the plot as it follows the thin line.
void Generation::widen(Columns columns) {
    for (int column = columns.left; column < columns.right; ++column) {
        int top = scale_.height();
        int end = 0;
        int from = column + brush_.before();
        for (const RowRun rows : brush_.columns()) {
            const RowRun line = thin(from--);
            if (line.top < line.end) {
                top = std::min(top, line.top + rows.top);
                end = std::max(end, line.end - 1 + rows.end);
            }
        }
        top = std::max(top, 0);
        end = std::min(end, scale_.height());
        runs_[static_cast<std::size_t>(column)] =
            top < end ? RowRun{static_cast<std::int16_t>(top), static_cast<std::int16_t>(end)}
                      : RowRun{};
    }
}

} // namespace kv408
