#pragma once

#include <vector>

#include "analysis/density_marks.h"
#include "display/density_layer.h"
#include "display/surface.h"
#include "display/unit_painter.h"

namespace kv408 {

/// A line in units of the plot, both ends within it.
struct PlotMark {
    double from_x = 0.0;
    double from_y = 0.0;
    double to_x = 0.0;
    double to_y = 0.0;
    bool dotted = false;

    friend bool operator==(const PlotMark&, const PlotMark&) = default;
};

/// Lines over the traces.
struct PlotMarks {
    std::vector<PlotMark> lines;
    Pixel colour = 0;

    friend bool operator==(const PlotMarks&, const PlotMarks&) = default;
};

/// Adds those parts of `marks` that lie within the plot to `lines`, where codes and points lie as
/// on `screen`.
void add_marks(const DensityMarks& marks, const DensityScreen& screen,
               std::vector<PlotMark>& lines);

/// Draws them; of dotted ones, those along a row or a column have gaps.
void draw_marks(const UnitPainter& painter, const PlotMarks& marks);

} // namespace kv408
