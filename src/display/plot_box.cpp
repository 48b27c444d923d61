#include "display/plot_box.h"

#include "display/box_geometry.h"
#include "display/copies.h"
#include "display/shapes.h"

namespace kv408 {

namespace {

Surface box_around(const Surface& area, const PlotScale& scale, const FrontPanel& panel) {
    const Point corner{scale.edge(box::left), scale.edge(box::top)};
    Surface result(2 * corner.x + area.width(), corner.y + area.height() + scale.edge(box::below));
    const Canvas canvas(result);
    fill_rectangle(canvas, whole(result),
                   pixel_of(panel.picture1.back_colour().value_or(Colour{})));
    copy_block(canvas, corner, area, whole(area));
    return result;
}

} // namespace

Surface plot_box(Picture& picture, const FrontPanel& panel) {
    return box_around(picture.at_natural_size(), PlotScale(), panel);
}

Surface shown_plot_box(Picture& picture, const FrontPanel& panel) {
    return box_around(picture.surface(), picture.scale(), panel);
}

} // namespace kv408
