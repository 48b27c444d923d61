#include "display/plot_box.h"

#include "display/copies.h"
#include "display/shapes.h"

namespace kv408 {

namespace {

Surface box_around(const Surface& area, const PlotScale& scale, const FrontPanel& panel) {
    constexpr int below = plot::box_height - plot::top - plot::height;
    const Point corner{scale.edge(plot::left), scale.edge(plot::top)};
    Surface box(2 * corner.x + area.width(), corner.y + area.height() + scale.edge(below));
    const Canvas canvas(box);
    fill_rectangle(canvas, whole(box), pixel_of(panel.picture1.back_colour().value_or(Colour{})));
    copy_block(canvas, corner, area, whole(area));
    return box;
}

} // namespace

Surface plot_box(Picture& picture, const FrontPanel& panel) {
    return box_around(picture.at_natural_size(), PlotScale(), panel);
}

Surface shown_plot_box(Picture& picture, const FrontPanel& panel) {
    return box_around(picture.surface(), picture.scale(), panel);
}

} // namespace kv408
