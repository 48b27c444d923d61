#include "display/shapes.h"

namespace kv408 {
namespace {

/// Calls `change(pixel)` for every pixel of `area` that may change.
template <typename Change>
void for_each_pixel(const Canvas& canvas, Rectangle area, const Change& change) {
    const Rectangle part = canvas.clipped(area);
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            change(canvas.surface().at(x, y));
        }
    }
}

/// The ellipse inscribed in a rectangle, as a question about pixels. Exact as long as the product
/// of width and height stays below 2^26, far beyond any surface.
class Ellipse {
public:
    explicit Ellipse(Rectangle bounds)
        : left_(bounds.left), top_(bounds.top), width_(static_cast<double>(bounds.right) - left_),
          height_(static_cast<double>(bounds.bottom) - top_) {}

    /// True when the centre of the pixel at (`x`, `y`) lies in or on the ellipse.
    [[nodiscard]] bool contains(double x, double y) const {
        const double across = (2.0 * (x - left_) + 1.0 - width_) * height_;
        const double down = (2.0 * (y - top_) + 1.0 - height_) * width_;
        const double limit = width_ * height_;
        return across * across + down * down <= limit * limit;
    }

    /// True when a neighbour of the pixel at (`x`, `y`) lies outside.
    [[nodiscard]] bool has_edge_at(double x, double y) const {
        return !contains(x - 1.0, y) || !contains(x + 1.0, y) || !contains(x, y - 1.0) ||
               !contains(x, y + 1.0);
    }

private:
    double left_;
    double top_;
    double width_;
    double height_;
};

} // namespace

void fill_rectangle(const Canvas& canvas, Rectangle area, Pixel colour) {
    const Rectangle part = canvas.clipped(area);
    if (part.left >= part.right) {
        return;
    }
    for (int y = part.top; y < part.bottom; ++y) {
        const auto row = canvas.surface().row(y);
        std::fill(row.begin() + part.left, row.begin() + part.right, colour);
    }
}

void invert_rectangle(const Canvas& canvas, Rectangle area) {
    for_each_pixel(canvas, area, [](Pixel& pixel) { pixel ^= bits_of_a_colour; });
}

void draw_ellipse(const Canvas& canvas, Rectangle bounds, Pixel outline, Pixel inside) {
    const Ellipse ellipse(bounds);
    const Rectangle part = canvas.clipped(bounds);
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            if (ellipse.contains(x, y)) {
                canvas.surface().at(x, y) = ellipse.has_edge_at(x, y) ? outline : inside;
            }
        }
    }
}

} // namespace kv408
