#include "plain_extras.h"

#include <algorithm>
#include <cmath>

#include "display/density_palette.h"

namespace kv408::test {

void PlainExtras::hit(std::size_t channel, int x, int y, unsigned times) {
    hits[channel].resize(std::size_t{641} * 513);
    hits[channel][static_cast<std::size_t>(y * 641 + x)] += times;
}

/// Within the plot's border at its left and its right.
void PlainExtras::draw_curves(Surface& picture, double factor,
                              const std::vector<Curve>& curves) const {
    for (const Curve& curve : curves) {
        Surface drawn(picture.width(), picture.height());
        const PlainPen pen(drawn, factor);
        pen.fill({0, 0, drawn.width(), drawn.height()}, 0);
        for (std::size_t index = 1; index < curve.points.size(); ++index) {
            const auto& [x, y] = curve.points[index - 1];
            const auto& [next_x, next_y] = curve.points[index];
            pen.line({pen.place(x), pen.place(y)}, {pen.place(next_x), pen.place(next_y)},
                     curve.colour);
        }
        const int left = static_cast<int>(std::floor(factor + 0.5));
        const int right = static_cast<int>(std::floor(640 * factor + 0.5));
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = left; x < right; ++x) {
                if (drawn.at(x, y) != 0) {
                    picture.at(x, y) = drawn.at(x, y);
                }
            }
        }
    }
}

/// Each band below the highest ends at half the hits of the one above, rounded down.
void PlainExtras::draw_densities(const PlainPen& pen) const {
    const DensityColours colours = density_colours(DensityPalette::cividis, {}, {});
    for (const std::size_t channel : {1U, 0U}) {
        const Hits& counts = hits[channel];
        const unsigned most = counts.empty() ? 0 : *std::max_element(counts.begin(), counts.end());
        for (std::size_t index = 0; index < counts.size(); ++index) {
            unsigned below = 0;
            for (unsigned half = most / 2; below < 6 && counts[index] <= half; half = half / 2) {
                ++below;
            }
            if (counts[index] != 0) {
                pen.unit(static_cast<int>(index % 641), static_cast<int>(index / 641),
                         colours[6 - below]);
            }
        }
    }
}

void PlainExtras::draw_marks(const PlainPen& pen, Pixel colour) const {
    for (const Line& line : lines) {
        const auto [left, right] = std::minmax(line.from_x, line.to_x);
        const auto [top, bottom] = std::minmax(line.from_y, line.to_y);
        if (top == bottom) {
            pen.row(top, left, right + 1, colour, line.dotted);
        } else if (left == right) {
            pen.column(left, top, bottom + 1, colour, line.dotted);
        } else {
            pen.slant(line.from_x, line.from_y, line.to_x, line.to_y, colour);
        }
    }
    if (histogram.bars.empty()) {
        return;
    }
    const auto& [left, top, right, bottom] = histogram.window;
    for (const int y : {top, bottom - 1}) {
        pen.row(y, left, right, colour, true);
    }
    for (const int x : {left, right - 1}) {
        pen.column(x, top, bottom, colour, true);
    }
    // Up to 80 units to the right or upwards, the other way where the plot ends before that.
    for (std::size_t index = 0; index < histogram.bars.size(); ++index) {
        const int length = static_cast<int>(std::ceil(80 * histogram.bars[index]));
        const int at = (histogram.levels ? top : left) + static_cast<int>(index);
        if (length == 0) {
            continue;
        }
        if (histogram.levels) {
            const int from = right + 80 <= 640 ? right : left - length;
            pen.row(at, from, from + length, colour, false);
        } else {
            const int from = top >= 80 ? top - length : bottom;
            pen.column(at, from, from + length, colour, false);
        }
    }
}

} // namespace kv408::test
