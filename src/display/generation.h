#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "display/plot_scale.h"
#include "state/plot_geometry.h"

namespace kv408 {

/// A point of a trace in units of the plot. The row is not rounded, so that it can be drawn at any
/// scale.
struct TracePoint {
    std::int32_t x = 0;
    double y = 0.0;

    friend constexpr bool operator==(const TracePoint&, const TracePoint&) = default;
};

/// The points of one sweep of one channel, where they lie at the scale at which they are drawn, and
/// what a line through the drawn ones covers.
///
/// As long as every drawn point lies one unit right of the point before (is_uniform), the line
/// through them covers one run of rows in each column of pixels: the pixels of the thin line in
/// that column and in its neighbours, widened by the brush. The runs are found once a sweep, or
/// once a point that is drawn by itself, so that composing a picture needs no line drawing.
class Generation {
public:
    Generation();

    /// Sets the points from index `first` on, all within 0..640.
    void set_points(int first, std::span<const TracePoint> points);

    /// Brings `runs` up to date with the points that were set.
    void settle();

    /// Point `index`, 0..640.
    [[nodiscard]] TracePoint point(int index) const {
        return points_[static_cast<std::size_t>(index)];
    }

    /// Draws from now on at `scale`.
    void rescale(const PlotScale& scale);

    /// Where the drawn points, 1..639, lie, in pixels.
    [[nodiscard]] std::span<const Point> drawn_points() const {
        return std::span(placed_).subspan(plot::first_point, drawn);
    }

    /// True when the x of the drawn points go up by one from each point to the next.
    [[nodiscard]] bool is_uniform() const { return breaks_ == 0; }

    /// Columns of pixels that a line or dots through the drawn points can reach, which may lie
    /// outside the plot; only of a uniform generation.
    [[nodiscard]] Columns columns() const;

    /// What the line through the drawn points covers in each column of the plot. Only of a uniform
    /// generation, and as it was when it settled.
    [[nodiscard]] std::span<const RowRun> runs() const { return runs_; }

    /// What each point and each pixel of a line is drawn with.
    [[nodiscard]] const Brush& brush() const { return brush_; }

private:
    static constexpr int drawn = plot::last_point - plot::first_point + 1;

    [[nodiscard]] Point placed(int index) const { return placed_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] int breaks_between(int first, int last) const;
    void place_points(int first, int last);
    void cover(int first, int last);
    void draw_thin(Point from, Point to, Columns columns);
    void widen(Columns columns);
    [[nodiscard]] RowRun& thin(int column);

    PlotScale scale_;
    Brush brush_;
    std::array<TracePoint, plot::points> points_ = {};
    std::array<Point, plot::points> placed_ = {};
    std::vector<RowRun> thin_; ///< of a line of one pixel; `margin` more columns at both sides
    std::vector<RowRun> runs_;
    /// Drawn points that do not lie one unit right of the drawn point before.
    int breaks_ = drawn - 1;
    /// Points that were set since it settled, and what lies between them; none: the first is
    /// higher.
    int first_set_ = plot::points;
    int last_set_ = 0;
};

} // namespace kv408
