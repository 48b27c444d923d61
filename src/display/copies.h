#pragma once

#include <optional>

#include "display/canvas.h"

namespace kv408 {

/// Copies the pixels of `area` of `source` to the canvas, its upper left corner to `place`. Parts
/// that lie outside the source or the canvas are left out. The source may not be the canvas's own
/// surface.
void copy_block(const Canvas& canvas, Point place, const Surface& source, Rectangle area);

/// Copies like copy_block, but leaves the canvas as it is where the source has the colour `key`.
void copy_transparent(const Canvas& canvas, Point place, const Surface& source, Rectangle area,
                      Pixel key);

/// The rectangle that covers all of `surface`.
[[nodiscard]] inline Rectangle whole(const Surface& surface) {
    return {0, 0, surface.width(), surface.height()};
}

} // namespace kv408
