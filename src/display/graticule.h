#pragma once

#include "display/unit_painter.h"

namespace kv408 {

/// Fills everything with `background` and draws the plot's border in `line`; with `dotted` also the
/// dots of the 10 by 8 divisions and the ticks on the edges and the centre lines, five per
/// division.
void draw_graticule(const UnitPainter& painter, Pixel background, Pixel line, bool dotted);

} // namespace kv408
