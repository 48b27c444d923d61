#include "display/plot_box.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "display/box_geometry.h"

namespace kv408 {
namespace {

using Act = std::function<void(std::span<const Pixel>)>;

/// How wide the box around `area` is, and how many rows are above and below it.
struct Frame {
    Frame(const Surface& area, const PlotScale& scale)
        : left(static_cast<std::size_t>(scale.edge(box::left))), above(scale.edge(box::top)),
          below(scale.edge(box::below)), width(2 * left + static_cast<std::size_t>(area.width())) {}
    std::size_t left;
    int above;
    int below;
    std::size_t width;
};

void for_each_row(const Surface& area, const Frame& frame, const FrontPanel& panel,
                  const Act& act) {
    const std::vector<Pixel> ground(frame.width,
                                    pixel_of(panel.picture1.back_colour().value_or(Colour{})));
    std::vector<Pixel> row = ground;
    for (int y = 0; y < frame.above; ++y) {
        act(ground);
    }
    for (int y = 0; y < area.height(); ++y) {
        const auto pixels = area.row(y);
        std::copy(pixels.begin(), pixels.end(),
                  row.begin() + static_cast<std::ptrdiff_t>(frame.left));
        act(row);
    }
    for (int y = 0; y < frame.below; ++y) {
        act(ground);
    }
}

Surface box_around(const Surface& area, const PlotScale& scale, const FrontPanel& panel) {
    const Frame frame(area, scale);
    Surface result(static_cast<int>(frame.width), frame.above + area.height() + frame.below);
    int y = 0;
    for_each_row(area, frame, panel, [&result, &y](std::span<const Pixel> row) {
        std::copy(row.begin(), row.end(), result.row(y++).begin());
    });
    return result;
}

/// The plot at natural size; a copy is made in `made` only where another size is shown.
const Surface& natural(Picture& picture, std::optional<Surface>& made) {
    return picture.scale() == PlotScale() ? picture.surface()
                                          : made.emplace(picture.at_natural_size());
}

} // namespace

Surface plot_box(Picture& picture, const FrontPanel& panel) {
    std::optional<Surface> made;
    return box_around(natural(picture, made), PlotScale(), panel);
}

void for_each_plot_box_row(Picture& picture, const FrontPanel& panel, const Act& act) {
    std::optional<Surface> made;
    const Surface& area = natural(picture, made);
    for_each_row(area, Frame(area, PlotScale()), panel, act);
}

Surface shown_plot_box(Picture& picture, const FrontPanel& panel) {
    return box_around(picture.surface(), picture.scale(), panel);
}

} // namespace kv408
