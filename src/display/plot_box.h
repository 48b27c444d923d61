#pragma once

#include "display/picture.h"
#include "panel/front_panel.h"

namespace kv408 {

/// The plot box `Picture1` in its full width and height, as a picture of its own: its background,
/// and the plot area in its place.
[[nodiscard]] Surface plot_box(Picture& picture, const FrontPanel& panel);

} // namespace kv408
