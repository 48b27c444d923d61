#pragma once

namespace kv408 {

/// The fixed measures of the plot, all in pixels of the picture at its natural size.
namespace plot {
inline constexpr int width = 641;      ///< plot area, x 0..640
inline constexpr int height = 513;     ///< plot area, y 0..512
inline constexpr int division = 64;    ///< one division, 10 across and 8 down
inline constexpr int centre_x = 320;   ///< vertical centre line
inline constexpr int centre_y = 256;   ///< horizontal centre line
inline constexpr int first_point = 1;  ///< first point of a trace that is drawn
inline constexpr int last_point = 639; ///< last point of a trace that is drawn
inline constexpr int points = 641;     ///< points of a trace, indices 0..640
inline constexpr int generations = 9;  ///< generations of the persistence history, 0 the newest

/// The plot area inside the plot box, which leaves a margin for the markers on every side. The
/// trigger-time marker runs from x 32 to 672, so the plot area's left edge lies at 32.
inline constexpr int left = 32;
inline constexpr int top = 20;
inline constexpr int box_width = left + width + left; ///< the plot box with both margins
inline constexpr int box_height = top + height + 7;   ///< the plot box with both margins

/// A marker label beside the plot: its own width, and the middle of its height, which lies on the
/// row that it marks.
inline constexpr int marker_width = 14;
inline constexpr int marker_middle = 7;

/// Where the top of the trigger-level marker stays at most, above and below the plot area's rows.
inline constexpr int trigger_marker_highest = top - 6;
inline constexpr int trigger_marker_lowest = top + 506;

/// The adjust wheel's value at its upper end for everything but the delay. Two of its steps are a
/// row of the plot: it stands at 1024 for row 0 and at 0 for row 512.
inline constexpr int wheel_span = 1024;
} // namespace plot

} // namespace kv408
