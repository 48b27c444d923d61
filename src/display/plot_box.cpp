#include "display/plot_box.h"

#include "display/copies.h"
#include "display/shapes.h"

namespace kv408 {

Surface plot_box(Picture& picture, const FrontPanel& panel) {
    Surface box(plot::box_width, plot::box_height);
    const Canvas canvas(box);
    fill_rectangle(canvas, whole(box), pixel_of(panel.picture1.back_colour().value_or(Colour{})));
    const Surface natural = picture.at_natural_size();
    copy_block(canvas, Point{plot::left, plot::top}, natural, whole(natural));
    return box;
}

} // namespace kv408
