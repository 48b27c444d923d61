#pragma once

namespace kv408 {

/// The graticule's units, of which 64 are a division: wheel, cursors, markers, measurements and
/// settings speak of the plot in these, whatever size it is shown in.
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

/// The rows within which the trigger-level marker is held, wherever the level lies.
inline constexpr int trigger_marker_highest = 1;
inline constexpr int trigger_marker_lowest = 513;

/// The adjust wheel's value at its upper end for everything but the delay. Two of its steps are a
/// row of the plot: it stands at 1024 for row 0 and at 0 for row 512.
inline constexpr int wheel_span = 1024;
} // namespace plot

} // namespace kv408
