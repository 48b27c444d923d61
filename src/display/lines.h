#pragma once

#include <span>

#include "display/canvas.h"
#include "display/plot_scale.h"

namespace kv408 {

// A line is not smoothed, and leaves its last pixel out, so that lines can be chained without
// touching a pixel twice. Which pixels a thin line has does not depend on its direction, except for
// that last one: a line at least as wide as high has one pixel per column, in the nearest row; a
// steeper one has one pixel per row, in the nearest column; the upper row or the left column is
// taken when two are equally near. A wider line is what its brush covers when it is put to each
// pixel of the thin one. Any coordinate of 32 bits may be given.

/// Puts `brush` to the pixel at `point`.
void draw_dot(const Canvas& canvas, Point point, const Brush& brush, Pixel colour);

/// Draws the line from `from` to `to`, without the pixel at `to`.
void draw_line(const Canvas& canvas, Point from, Point to, const Brush& brush, Pixel colour);

/// Draws the lines that connect `points` in their order, without the last point's pixel.
void draw_polyline(const Canvas& canvas, std::span<const Point> points, const Brush& brush,
                   Pixel colour);

} // namespace kv408
