#pragma once

#include <vector>

namespace kv408 {

/// A rectangle of the plot, in its units: columns from `left` and rows from `top` up to, not
/// including, `right` and `bottom`.
struct PlotWindow {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    friend bool operator==(const PlotWindow&, const PlotWindow&) = default;
};

/// A histogram as the plot shows it: its window, and bars beside that.
struct ShownHistogram {
    PlotWindow window;
    bool levels = true; ///< a bar for each row of the window; else one for each column
    /// Lengths of the bars, 0 to 1, from the top or from the left.
    std::vector<double> bars;

    friend bool operator==(const ShownHistogram&, const ShownHistogram&) = default;
};

} // namespace kv408
