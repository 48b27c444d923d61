#pragma once

#include <span>

#include "display/canvas.h"

namespace kv408 {

// Lines are one pixel wide and not smoothed, and they leave their last pixel out, so that lines
// can be chained without touching a pixel twice. Which pixels a line has does not depend on its
// direction, except for that last one: a line at least as wide as high has one pixel a column,
// in the nearest row; a steeper one has one pixel a row, in the nearest column; the upper row or
// the left column is taken when two are equally near. Any coordinate of 32 bits may be given.

/// How the pixels along a line are drawn.
enum class PenStyle {
    solid,  ///< every pixel
    dotted, ///< three pixels drawn and three left as they are, counted from the line's start
};

/// What a line is drawn with.
struct Pen {
    Pixel colour = 0;
    PenStyle style = PenStyle::solid;
};

/// Sets the pixel at `point`.
void set_pixel(const Canvas& canvas, Point point, Pixel colour);

/// Draws the line from `from` to `to`, without the pixel at `to`.
void draw_line(const Canvas& canvas, Point from, Point to, Pen pen);

/// Draws the solid lines that connect `points` in their order, without the last point's pixel.
void draw_polyline(const Canvas& canvas, std::span<const Point> points, Pixel colour);

} // namespace kv408
