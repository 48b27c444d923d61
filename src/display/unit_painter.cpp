#include "display/unit_painter.h"

#include <algorithm>
#include <cmath>

#include "display/copies.h"
#include "display/shapes.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

/// Units of a dotted line that are drawn, and that are left, at a time.
constexpr int dash = 3;

int nearest(double pixels) {
    return static_cast<int>(std::lround(pixels));
}

} // namespace

/// The first pixel of a line at unit `unit`, where the plot has `units` of them on `pixels` pixels.
std::int32_t UnitPainter::start(double unit, int units, int pixels) const {
    const int width = scale_.line_width();
    // Further away nothing can be seen; sums stay within 32 bits.
    constexpr std::int32_t farthest = 1 << 30;
    const std::int32_t first = std::clamp(scale_.place(unit), -farthest, farthest) - width / 2;
    return unit >= -0.5 && unit <= units - 0.5 ? std::clamp(first, 0, pixels - width) : first;
}

std::int32_t UnitPainter::column(double x) const {
    return start(x, plot::width, scale_.width());
}

std::int32_t UnitPainter::row(double y) const {
    return start(y, plot::height, scale_.height());
}

/// Calls `draw(from, to)` for each piece of a line between the pixels `from` and `to` that `style`
/// draws. All pieces have the same length but for the last.
template <typename Draw>
void UnitPainter::draw_dashes(std::int32_t from, std::int32_t to, int first_unit, PenStyle style,
                              std::int32_t (UnitPainter::*start_of)(double) const,
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

void UnitPainter::draw_slant(UnitPlace from, UnitPlace to, Pixel colour) const {
    const double right = to.x - from.x;
    const double down = to.y - from.y;
    // Along the axis on which it goes further, pixel by pixel; across, at most one pixel on with
    // each.
    const bool steep = std::fabs(down) > std::fabs(right);
    const double slope = steep ? right / down : down / right;
    const double along_from = steep ? from.y : from.x;
    const double along_to = steep ? to.y : to.x;
    const int first = round_to_int32(std::min(along_from, along_to));
    const int last = round_to_int32(std::max(along_from, along_to));
    const auto along = [&](double unit) { return steep ? row(unit) : column(unit); };
    const auto across = [&](std::int32_t pixel) {
        const int half_width = scale_.line_width() / 2;
        const double middle = pixel + half_width + 0.5;
        const double unit = std::clamp(middle / scale_.factor() - 0.5, double(first), double(last));
        const double place = (steep ? from.x : from.y) + (unit - along_from) * slope;
        return steep ? column(place) : row(place);
    };
    const std::int32_t beyond = along(last + 1);
    for (std::int32_t begin = along(first); begin < beyond;) {
        const std::int32_t here = across(begin);
        std::int32_t end = begin + 1;
        while (end < beyond && across(end) == here) {
            ++end;
        }
        const std::int32_t other = here + scale_.line_width();
        paint(steep ? Rectangle{here, begin, other, end} : Rectangle{begin, here, end, other},
              colour);
        begin = end;
    }
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
