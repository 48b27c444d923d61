#include "display/trace_painter.h"

#include "display/lines.h"
#include "display/shapes.h"

namespace kv408 {
namespace {

/// Point by point, so that a later point covers an earlier one whatever their generations.
void paint_dots(const Canvas& canvas, const TraceView& view) {
    for (int index = plot::first_point; index <= plot::last_point; ++index) {
        for (int layer = layers_of(view.look) - 1; layer >= 0; --layer) {
            set_pixel(canvas, layer_of(view, layer).point(index), layer_colour(view.look, layer));
        }
    }
}

void paint_lines(const Canvas& canvas, const TraceView& view) {
    for (int layer = layers_of(view.look) - 1; layer >= 0; --layer) {
        draw_polyline(canvas, layer_of(view, layer).drawn_points(), layer_colour(view.look, layer));
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
