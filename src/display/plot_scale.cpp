#include "display/plot_scale.h"

#include <algorithm>
#include <cmath>

#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

int rounded(double pixels) {
    return static_cast<int>(std::lround(pixels));
}

/// Nothing that far away can be seen; it still leaves room for sums of 32 bits.
std::int32_t pixel(double place) {
    constexpr double farthest = 1 << 30;
    return static_cast<std::int32_t>(std::floor(std::clamp(place, -farthest, farthest)));
}

} // namespace

PlotScale::PlotScale(double factor)
    : factor_(std::clamp(factor, natural, largest)), width_(rounded(plot::width * factor_)),
      height_(rounded(plot::height * factor_)), line_width_(rounded(factor_)) {}

std::int32_t PlotScale::place(double unit) const {
    return factor_ == natural ? round_to_int32(unit) : pixel((unit + 0.5) * factor_);
}

std::int32_t PlotScale::edge(double unit) const {
    return pixel(unit * factor_ + 0.5);
}

Brush::Brush(int width) {
    for (int column = 0; column < width; ++column) {
        const auto inside = [&](int row) {
            const int across = 2 * column + 1 - width;
            const int down = 2 * row + 1 - width;
            return across * across + down * down <= width * width;
        };
        int top = 0;
        while (!inside(top)) {
            ++top;
        }
        columns_.push_back({static_cast<std::int16_t>(top - width / 2),
                            static_cast<std::int16_t>(width - top - width / 2)});
    }
}

} // namespace kv408
