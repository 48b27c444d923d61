#pragma once

#include "display/picture.h"
#include "panel/front_panel.h"

namespace kv408 {

/// The plot box `Picture1` in its full width and height, as a picture of its own at natural size:
/// its background, and the plot area in its place.
[[nodiscard]] Surface plot_box(Picture& picture, const FrontPanel& panel);

/// The same at the size at which the window shows it.
[[nodiscard]] Surface shown_plot_box(Picture& picture, const FrontPanel& panel);

} // namespace kv408
