#pragma once

// Lengths that several parts of the windows share, in pixels.

namespace kv408::ui {

/// Between the parts of a window, and from them to its edge.
inline constexpr int window_gap = 8;
/// Radius of the corners of a frame around a part of the window.
inline constexpr double frame_corner = 5.0;
/// Radius of the corners of a box or button.
inline constexpr double box_corner = 4.0;
/// What the title bar of a desktop takes at most.
inline constexpr int title_bar_height = 40;

} // namespace kv408::ui
