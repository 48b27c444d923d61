#pragma once

#include "state/plot_geometry.h"

namespace kv408 {

/// The plot box: the plot area and the margins around it, in which the markers are. In pixels at
/// natural size, where a unit of the plot is a pixel; at a larger scale all of it grows alike.
namespace box {
inline constexpr int left = 32; ///< left edge of the plot area; the right margin is as wide
inline constexpr int top = 20;  ///< upper edge of the plot area
inline constexpr int below = 7; ///< margin under the plot area
inline constexpr int width = left + plot::width + left;
inline constexpr int height = top + plot::height + below;

inline constexpr int marker_width = 14; ///< of a marker beside the plot
inline constexpr int marker_middle = 7; ///< from a marker's top to the row that it marks

/// Upper left corner of something in the plot box.
struct Corner {
    int left;
    int top;
};

/// Top of a marker that marks `row` from beside the plot.
[[nodiscard]] constexpr int marker_top(int row) {
    return top + row - marker_middle;
}

/// The marker left of the plot that marks `row`.
[[nodiscard]] constexpr Corner left_marker(int row) {
    return {left - marker_width - 1, marker_top(row)};
}

/// The marker right of the plot that marks `row`.
[[nodiscard]] constexpr Corner right_marker(int row) {
    return {width - left + 1, marker_top(row)};
}

/// The marker above the plot that marks `column`: there its own width begins half of it further
/// left.
[[nodiscard]] constexpr Corner upper_marker(int column) {
    return {left + column, top - marker_width - 1};
}

inline constexpr int number_width = 8;   ///< of a cursor's number
inline constexpr int number_height = 15; ///< of a cursor's number

/// Number `index`, 0 or 1, of a voltage cursor in `row`: right of the plot, beyond the trigger
/// level's marker. The two never lie on each other.
[[nodiscard]] constexpr Corner row_number(int row, int index) {
    return {left + plot::width + 1 + marker_width + index * number_width, marker_top(row)};
}

/// Number `index` of a time cursor in `column`: above the plot, number 0 left of its line and
/// number 1 right of it.
[[nodiscard]] constexpr Corner column_number(int column, int index) {
    return {left + column + (index == 0 ? -number_width : 1), top - number_height - 1};
}
} // namespace box

} // namespace kv408
