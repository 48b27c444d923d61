#pragma once

#include <optional>
#include <span>
#include <vector>

#include "analysis/histogram.h"
#include "display/density_layer.h"
#include "display/surface.h"
#include "display/unit_painter.h"
#include "state/plot_window.h"

namespace kv408 {

/// A histogram as it is to be drawn.
struct HistogramMarks {
    std::optional<ShownHistogram> shown;
    Pixel colour = 0;

    friend bool operator==(const HistogramMarks&, const HistogramMarks&) = default;
};

/// The longest bar, units of the plot.
inline constexpr int longest_bar = 80;

/// The bars of `histogram` as rectangles of units: beside its window on the right, or above it, and
/// on the other side where the plot has no room for the longest there.
[[nodiscard]] std::vector<Rectangle> bars_of(const ShownHistogram& histogram);

/// Draws the frame of the window, dotted, and the bars.
void draw_histogram(const UnitPainter& painter, const HistogramMarks& marks);

/// How long the bars of `window` are over what `layer` shows.
[[nodiscard]] ShownHistogram histogram_on(const DensityLayer& layer, const PlotWindow& window,
                                          bool levels);

} // namespace kv408
