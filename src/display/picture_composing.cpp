// How a picture is composed: traces on the backdrop, what lies over them, column by column.

#include <algorithm>
#include <cstddef>
#include <span>

#include "display/copies.h"
#include "display/picture.h"
#include "display/shapes.h"
#include "display/trace_painter.h"

namespace kv408 {

void Picture::compose(Columns columns) {
    TraceViews views;
    for (std::size_t index = 0; index < traces_.size(); ++index) {
        const TraceContent& drawn = drawn_.traces[index];
        views.push_back({&drawn_trace(traces_[index]), drawn.look, pixels_of(drawn.gap)});
    }
    const Canvas canvas(display_, columns);
    changed_.add(inked_, columns);
    if (std::all_of(views.begin(), views.end(), TraceRaster::can_draw)) {
        compose_by_runs(canvas, views);
    } else {
        compose_by_painting(canvas, views);
    }
    for (const PlacedReference& trace : placed_maths_) {
        draw_reference(canvas, scale_, trace, &inked_);
    }
    draw_overlays(UnitPainter(canvas, scale_, &inked_), drawn_.overlays);
    changed_.add(inked_, columns);
}

/// Makes the band from row `top` on the bare grid again.
void Picture::take_off(const Canvas& canvas, int top) {
    // Most tiles of the grid have nothing but its ground, which need not be read to be copied.
    inked_.for_each_row(canvas.columns(), top, [&](const Rectangle& tiles) {
        fill_rectangle(canvas, tiles, grid_background_);
    });
    inked_.for_each_common_row(backdrop_, canvas.columns(), top, [&](const Rectangle& tiles) {
        copy_block(canvas, Point{tiles.left, tiles.top}, grid_, tiles);
    });
    inked_.remove(canvas.columns(), top);
}

void Picture::compose_by_runs(const Canvas& canvas, const TraceViews& views) {
    const Columns columns = canvas.columns();
    constexpr int side = TraceRaster::block_columns;
    for (int left = columns.left / side * side; left < columns.right; left += side) {
        compose_block(Canvas(canvas.surface(), common(columns, {left, left + side})), views);
    }
}

void Picture::compose_block(const Canvas& canvas, const TraceViews& views) {
    const std::size_t at_a_time = TraceRaster::drawn_at_a_time(views, drawn_.background);
    for (std::size_t first = 0; first < views.size(); first += at_a_time) {
        const std::size_t count = std::min(at_a_time, views.size() - first);
        raster_.paint(canvas.columns(), std::span(views).subspan(first, count), drawn_.background);
        const Backdrop backdrop =
            first == 0 ? Backdrop{grid_, &backdrop_, grid_background_} : Backdrop{canvas.surface()};
        // What was there goes band by band too, so that each band is written while it is in the
        // cache.
        for (int top = 0; top < scale_.height(); top += TraceRaster::band_rows) {
            if (first == 0) {
                raster_.take_covered_out(inked_, canvas.columns(), top);
                take_off(canvas, top);
            }
            raster_.write_band(canvas, top, backdrop, inked_);
        }
    }
}

void Picture::compose_by_painting(const Canvas& canvas, const TraceViews& views) {
    copy_block(canvas, Point{}, grid_, whole(grid_));
    inked_.add({canvas.columns().left, 0, canvas.columns().right, canvas.height()});
    if (!trace_surface_) {
        trace_surface_ = Surface(scale_.width(), scale_.height());
    }
    const Canvas sheet(*trace_surface_, canvas.columns());
    for (const TraceView& view : views) {
        if (view.look.shown) {
            fill_rectangle(sheet, whole(*trace_surface_), drawn_.background);
            paint_trace(sheet, view, drawn_.background);
            copy_transparent(canvas, Point{}, *trace_surface_, whole(*trace_surface_),
                             drawn_.background);
        }
    }
}

} // namespace kv408
