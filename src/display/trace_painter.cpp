#include "display/trace_painter.h"

#include "display/lines.h"
#include "display/shapes.h"

namespace kv408 {
namespace {

void paint_dots(const Canvas& canvas, const TraceView& view) {
    const int layers = layers_of(view.look);
    const Brush& brush = layer_of(view, 0).brush();
    const auto paint = [&](int layer, std::size_t index) {
        draw_dot(canvas, layer_of(view, layer).drawn_points()[index], brush,
                 layer_colour(view.look, layer));
    };
    const std::size_t points = layer_of(view, 0).drawn_points().size();
    if (brush.width() == 1) {
        // Point by point, so that a later point covers an earlier one whatever their generations.
        for (std::size_t index = 0; index < points; ++index) {
            for (int layer = layers - 1; layer >= 0; --layer) {
                paint(layer, index);
            }
        }
        return;
    }
    // Neighbouring discs may touch: an older generation must not cut into a newer one.
    for (int layer = layers - 1; layer >= 0; --layer) {
        for (std::size_t index = 0; index < points; ++index) {
            paint(layer, index);
        }
    }
}

void paint_lines(const Canvas& canvas, const TraceView& view) {
    for (int layer = layers_of(view.look) - 1; layer >= 0; --layer) {
        const Generation& generation = layer_of(view, layer);
        draw_polyline(canvas, generation.drawn_points(), generation.brush(),
                      layer_colour(view.look, layer));
    }
}

} // namespace

void paint_trace(const Canvas& canvas, const TraceView& view, Pixel background) {
    if (view.look.dots) {
        paint_dots(canvas, view);
    } else {
        paint_lines(canvas, view);
    }
    fill_rectangle(canvas, {view.gap.left, 0, view.gap.right, canvas.height()}, background);
}

} // namespace kv408
