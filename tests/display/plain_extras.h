#pragma once

#include <array>
#include <utility>
#include <vector>

#include "plain_pen.h"

namespace kv408::test {

/// What the plain picture shows besides traces, cursors and annotations, in units of the plot.
struct PlainExtras {
    struct Curve {
        std::vector<std::pair<double, double>> points; ///< column and row
        Pixel colour = 0;
    };
    struct Line {
        int from_x = 0;
        int from_y = 0;
        int to_x = 0;
        int to_y = 0;
        bool dotted = false;
    };
    struct Histogram {
        Rectangle window;
        bool levels = true;
        std::vector<double> bars; ///< 0..1; none: no histogram is shown
    };
    /// Hits of a unit, row by row; none at all where nothing is collected.
    using Hits = std::vector<unsigned>;

    std::vector<Curve> references; ///< under the traces
    std::vector<Curve> maths;      ///< over them
    std::array<Hits, 2> hits;      ///< by channel, CH1's on top
    std::vector<Line> lines;
    Histogram histogram;

    /// Counts `times` hits in unit (`x`, `y`).
    void hit(std::size_t channel, int x, int y, unsigned times);

    void draw_curves(Surface& picture, double factor, const std::vector<Curve>& curves) const;
    void draw_densities(const PlainPen& pen) const;
    void draw_marks(const PlainPen& pen, Pixel colour) const;
};

} // namespace kv408::test
