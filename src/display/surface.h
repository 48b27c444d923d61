#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "state/colour.h"

namespace kv408 {

/// One pixel: 0xFFRRGGBB.
using Pixel = std::uint32_t;

/// The pixel of `colour`, opaque.
[[nodiscard]] constexpr Pixel pixel_of(Colour colour) {
    return 0xFF000000U | static_cast<Pixel>(red_of(colour)) << 16U |
           static_cast<Pixel>(green_of(colour)) << 8U | static_cast<Pixel>(blue_of(colour));
}

/// A place on a surface, in pixels from its upper left corner.
struct Point {
    std::int32_t x = 0;
    std::int32_t y = 0;

    friend constexpr bool operator==(const Point&, const Point&) = default;
};

/// A rectangle of pixels, `left` and `top` included, `right` and `bottom` not.
struct Rectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    friend constexpr bool operator==(const Rectangle&, const Rectangle&) = default;
};

/// A range of columns of the plot, `left` included, `right` not.
struct Columns {
    int left = 0;
    int right = 0;

    /// True when there is no column in it.
    [[nodiscard]] constexpr bool empty() const { return left >= right; }

    friend constexpr bool operator==(const Columns&, const Columns&) = default;
};

/// The columns that `a` and `b` have in common.
[[nodiscard]] constexpr Columns common(Columns a, Columns b) {
    return Columns{std::max(a.left, b.left), std::min(a.right, b.right)};
}

/// A drawing surface in memory, row after row from the top.
class Surface {
public:
    /// A surface of `width` by `height` pixels, all black.
    Surface(int width, int height);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    /// All pixels, row 0 first; `width()` pixels per row without padding.
    [[nodiscard]] std::span<const Pixel> pixels() const { return pixels_; }
    [[nodiscard]] std::span<Pixel> pixels() { return pixels_; }

    /// The pixels of row `y`, which must lie on the surface.
    [[nodiscard]] std::span<const Pixel> row(int y) const {
        return pixels().subspan(offset(0, y), static_cast<std::size_t>(width_));
    }
    [[nodiscard]] std::span<Pixel> row(int y) {
        return pixels().subspan(offset(0, y), static_cast<std::size_t>(width_));
    }

    /// The pixel at (`x`, `y`), which must lie on the surface.
    [[nodiscard]] Pixel at(int x, int y) const { return pixels_[offset(x, y)]; }
    [[nodiscard]] Pixel& at(int x, int y) { return pixels_[offset(x, y)]; }

private:
    [[nodiscard]] std::size_t offset(int x, int y) const {
        assert(x >= 0 && x < width_ && y >= 0 && y < height_);
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_;
    int height_;
    std::vector<Pixel> pixels_;
};

} // namespace kv408
