#pragma once

#include <functional>
#include <span>

#include "display/picture.h"
#include "panel/front_panel.h"

namespace kv408 {

/// The plot box `Picture1` in its full width and height, as a picture of its own at natural size:
/// its background, and the plot area in its place.
[[nodiscard]] Surface plot_box(Picture& picture, const FrontPanel& panel);

/// Calls `act` with each row of it from the top, without making all of it.
void for_each_plot_box_row(Picture& picture, const FrontPanel& panel,
                           const std::function<void(std::span<const Pixel>)>& act);

/// The plot box at the size at which the window shows it.
[[nodiscard]] Surface shown_plot_box(Picture& picture, const FrontPanel& panel);

} // namespace kv408
