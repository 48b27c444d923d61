#pragma once

#include <array>
#include <vector>

#include "picture_scene.h"
#include "plain_extras.h"
#include "plain_pen.h"

namespace kv408::test {

/// The picture drawn in the plainest way, to compare with: every draw starts from the grid, paints
/// each trace generation by generation onto its own cleared surface and copies that over with the
/// background transparent, and the overlays are drawn over all of it. It keeps its own points,
/// mapped when the picture's are.
class PlainPicture {
public:
    /// The plain picture of `scene`, which must outlive it, before any point is mapped.
    explicit PlainPicture(const PictureScene& scene);

    void refresh(Channel channel, int index);
    void shift();
    void set_newest_point(int index) { newest_point_ = index; }
    void set_depth(int depth) { depth_ = depth; }
    void set_factor(double factor) { factor_ = factor; }

    /// What is shown besides.
    PlainExtras extras;

    /// The picture that the parts `flags` give now.
    [[nodiscard]] Surface draw(unsigned flags) const;

private:
    struct Place {
        int x = 0;
        double y = 0.0;
    };
    using Points = std::vector<Place>; // 0..640, in units

    [[nodiscard]] bool shows(Channel channel, unsigned flags) const;
    [[nodiscard]] std::vector<std::pair<const Points*, Pixel>> layers(Channel channel) const;
    void draw_trace(Surface& picture, Channel channel) const;
    void draw_overlays(const PlainPen& pen) const;
    [[nodiscard]] Surface surface() const;

    const PictureScene* scene_;
    std::array<Points, 2> current_;
    std::array<std::vector<Points>, 2> history_;
    int newest_point_ = 0;
    int depth_ = 3;
    double factor_ = 1.0;
};

} // namespace kv408::test
