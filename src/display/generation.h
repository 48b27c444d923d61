#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "display/surface.h"
#include "state/plot_geometry.h"

namespace kv408 {

/// Rows of one column that a trace drawn as a line covers, `top` included, `end` not; none when
/// both are equal, to the row of the column's point.
struct RowRun {
    std::int16_t top = 0;
    std::int16_t end = 0;

    friend constexpr bool operator==(const RowRun&, const RowRun&) = default;
};

/// The points of one sweep of one channel, and what a line through the drawn ones covers.
///
/// As long as every drawn point lies one column right of the point before (is_uniform), the line
/// through them covers one run of rows in each column: the part of the segment before that is
/// nearer to this point than to the last one, the point itself, and the nearer half of the next
/// segment. The runs are kept up to date with each point, so that composing a picture needs no
/// line drawing.
class Generation {
public:
    /// Sets point `index`, 0..640.
    void set_point(int index, Point point);

    /// Point `index`, 0..640.
    [[nodiscard]] Point point(int index) const { return points_[static_cast<std::size_t>(index)]; }

    /// The drawn points, 1..639.
    [[nodiscard]] std::span<const Point> drawn_points() const {
        return std::span(points_).subspan(plot::first_point, drawn);
    }

    /// True when the x of the drawn points go up by one from each point to the next.
    [[nodiscard]] bool is_uniform() const { return breaks_ == 0; }

    /// Columns of the drawn points, which may lie outside the plot; only of a uniform generation.
    [[nodiscard]] Columns columns() const {
        return {point(plot::first_point).x, point(plot::last_point).x + 1};
    }

    /// What the line through the drawn points covers, one run for each drawn point's column. Only
    /// of a uniform generation.
    [[nodiscard]] std::span<const RowRun> runs() const {
        return std::span(runs_).subspan(plot::first_point, drawn);
    }

private:
    static constexpr std::size_t drawn = plot::last_point - plot::first_point + 1;

    [[nodiscard]] bool breaks_before(int index) const;
    [[nodiscard]] RowRun run_of(int index) const;

    std::array<Point, plot::points> points_ = {};
    std::array<RowRun, plot::points> runs_ = {};
    /// Drawn points that do not lie one column right of the drawn point before.
    int breaks_ = plot::last_point - plot::first_point;
};

} // namespace kv408
