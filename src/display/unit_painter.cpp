#include "display/unit_painter.h"

#include <cmath>

#include "display/copies.h"
#include "display/shapes.h"
#include "state/plot_geometry.h"

namespace kv408 {
namespace {

/// Units of a dotted line that are drawn, and that are left, at a time.
constexpr int dash = 3;

int nearest(double pixels) {
    return static_cast<int>(std::lround(pixels));
}

} // namespace

/// The first pixel of unit `unit`, where the plot has `units` of them on `pixels` pixels.
std::int32_t UnitPainter::start(int unit, int units, int pixels) const {
    const int width = scale_.line_width();
    // Further away nothing can be seen; sums stay within 32 bits.
    constexpr std::int32_t farthest = 1 << 30;
    const std::int32_t first = std::clamp(scale_.place(unit), -farthest, farthest) - width / 2;
    return unit >= 0 && unit < units ? std::clamp(first, 0, pixels - width) : first;
}

std::int32_t UnitPainter::column(int x) const {
    return start(x, plot::width, scale_.width());
}

std::int32_t UnitPainter::row(int y) const {
    return start(y, plot::height, scale_.height());
}

/// Calls `draw(from, to)` for each piece of a line between the pixels `from` and `to` that `style`
/// draws. All pieces have the same length but for the last.
template <typename Draw>
void UnitPainter::draw_dashes(std::int32_t from, std::int32_t to, int first_unit, PenStyle style,
                              std::int32_t (UnitPainter::*start_of)(int) const,
                              const Draw& draw) const {
    if (style == PenStyle::solid) {
        draw(from, to);
        return;
    }
    const int length = nearest(dash * scale_.factor());
    for (int unit = first_unit; (this->*start_of)(unit) < to; unit += 2 * dash) {
        const std::int32_t left = (this->*start_of)(unit);
        draw(left, std::min(left + length, to));
    }
}

void UnitPainter::touch(Rectangle pixels) const {
    if (touched_ != nullptr) {
        touched_->add(canvas_.clipped(pixels));
    }
}

void UnitPainter::paint(Rectangle pixels, Pixel colour) const {
    fill_rectangle(canvas_, pixels, colour);
    touch(pixels);
}

void UnitPainter::fill(Pixel colour) const {
    fill_rectangle(canvas_, whole(canvas_.surface()), colour);
}

void UnitPainter::draw_row(int y, int from, int to, Pixel colour, PenStyle style) const {
    const std::int32_t top = row(y);
    draw_dashes(column(from), column(to), from, style, &UnitPainter::column,
                [&](std::int32_t left, std::int32_t right) {
                    paint({left, top, right, top + scale_.line_width()}, colour);
                });
}

void UnitPainter::draw_column(int x, int from, int to, Pixel colour, PenStyle style) const {
    const std::int32_t left = column(x);
    draw_dashes(row(from), row(to), from, style, &UnitPainter::row,
                [&](std::int32_t top, std::int32_t bottom) {
                    paint({left, top, left + scale_.line_width(), bottom}, colour);
                });
}

void UnitPainter::draw_dot(int x, int y, Pixel colour) const {
    const int width = scale_.line_width();
    const Point place{column(x), row(y)};
    paint({place.x, place.y, place.x + width, place.y + width}, colour);
}

void UnitPainter::draw_ellipse(Rectangle units, Pixel colour) const {
    const Point place{scale_.edge(units.left), scale_.edge(units.top)};
    const int wide = nearest((units.right - units.left) * scale_.factor());
    const int high = nearest((units.bottom - units.top) * scale_.factor());
    const Rectangle pixels{place.x, place.y, place.x + wide, place.y + high};
    kv408::draw_ellipse(canvas_, pixels, colour, colour);
    touch(pixels);
}

} // namespace kv408
