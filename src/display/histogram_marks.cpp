#include "display/histogram_marks.h"

#include <algorithm>
#include <cmath>

#include "state/plot_geometry.h"

namespace kv408 {

std::vector<Rectangle> bars_of(const ShownHistogram& histogram) {
    const PlotWindow& window = histogram.window;
    const bool room =
        histogram.levels ? window.right + longest_bar < plot::width : window.top - longest_bar >= 0;
    std::vector<Rectangle> bars;
    for (std::size_t index = 0; index < histogram.bars.size(); ++index) {
        const int length = static_cast<int>(std::ceil(histogram.bars[index] * longest_bar));
        if (length == 0) {
            continue;
        }
        if (histogram.levels) {
            const int y = window.top + static_cast<int>(index);
            const int x = room ? window.right : window.left - length;
            bars.push_back({x, y, x + length, y + 1});
        } else {
            const int x = window.left + static_cast<int>(index);
            const int y = room ? window.top - length : window.bottom;
            bars.push_back({x, y, x + 1, y + length});
        }
    }
    return bars;
}

void draw_histogram(const UnitPainter& painter, const HistogramMarks& marks) {
    if (!marks.shown) {
        return;
    }
    const PlotWindow& window = marks.shown->window;
    for (const int y : {window.top, window.bottom - 1}) {
        painter.draw_row(y, window.left, window.right, marks.colour, PenStyle::dotted);
    }
    for (const int x : {window.left, window.right - 1}) {
        painter.draw_column(x, window.top, window.bottom, marks.colour, PenStyle::dotted);
    }
    for (const Rectangle& bar : bars_of(*marks.shown)) {
        if (marks.shown->levels) {
            painter.draw_row(bar.top, bar.left, bar.right, marks.colour);
        } else {
            painter.draw_column(bar.left, bar.top, bar.bottom, marks.colour);
        }
    }
}

ShownHistogram histogram_on(const DensityLayer& layer, const PlotWindow& window, bool levels) {
    ShownHistogram histogram{.window = window, .levels = levels, .bars = {}};
    histogram.bars.resize(
        static_cast<std::size_t>(levels ? window.bottom - window.top : window.right - window.left));
    double most = 0.0;
    for (int y = window.top; y < window.bottom; ++y) {
        const auto hits = layer.row(y);
        for (int x = window.left; x < window.right; ++x) {
            double& bar =
                histogram.bars[static_cast<std::size_t>(levels ? y - window.top : x - window.left)];
            bar += hits[static_cast<std::size_t>(x)];
            most = std::max(most, bar);
        }
    }
    for (double& bar : histogram.bars) {
        bar = most > 0.0 ? bar / most : 0.0;
    }
    return histogram;
}

} // namespace kv408
