#pragma once

#include <cstdint>
#include <vector>

#include "display/surface.h"

namespace kv408 {

/// A set of tiles, squares of 8 by 8 pixels, which together cover a surface from its upper left
/// corner on. Those at its right and bottom edges may reach beyond it.
class Tiles {
public:
    static constexpr int side = 8;       ///< columns and rows of a tile, in pixels
    static constexpr int band_rows = 64; ///< rows that are handled at a time, in pixels

    /// One column of tiles in one band: bit r for the tile whose rows begin 8 r below the band's.
    using Stack = std::uint8_t;

    /// No tile of a surface of `width` by `height` pixels.
    Tiles(int width, int height);

    /// Adds every tile.
    void add_all();

    /// Adds the tiles that have pixels of `area` and of the surface.
    void add(Rectangle area);

    /// Adds the tiles of `stack` that lie in the band that has row `top`, and in the tiles' column
    /// that pixel column `column` is in.
    void add(int column, int top, Stack stack) { at(column / side, top / band_rows) |= stack; }

    /// Which tiles the set has of the stack in the band that has row `top`, and in the tiles'
    /// column that pixel column `column` is in.
    [[nodiscard]] Stack stack(int column, int top) const {
        return at(column / side, top / band_rows);
    }

    /// Whether the set has the tile with the pixel in column `x` and row `y`.
    [[nodiscard]] bool has(int x, int y) const {
        return (stack(x, y) >> (y % band_rows / side) & 1U) != 0;
    }

    /// Takes out the tiles of `stack` that lie there.
    void remove(int column, int top, Stack stack) {
        at(column / side, top / band_rows) &= static_cast<Stack>(~stack);
    }

    /// Adds the tile that has the pixel in column `x` and row `y`, which must lie on the surface.
    void add_pixel(int x, int y) { add(x, y, static_cast<Stack>(1U << (y % band_rows / side))); }

    /// Adds the tiles of `others`, a set for a surface of the same size, that have pixels of
    /// `columns`.
    void add(const Tiles& others, Columns columns);

    /// Takes out the tiles of the band from row `top` on all of whose columns on the surface are
    /// among `columns`.
    void remove(Columns columns, int top);

    void clear();

    /// Calls `visit` with each row of neighbouring tiles in the band from row `top` on that has
    /// pixels of `columns`, as a rectangle of whole tiles.
    template <typename Visit>
    void for_each_row(Columns columns, int top, const Visit& visit) const {
        for_each_common_row(*this, columns, top, visit);
    }

    /// The same for those tiles that `others`, a set for a surface of the same size, has too.
    template <typename Visit>
    void for_each_common_row(const Tiles& others, Columns columns, int top,
                             const Visit& visit) const {
        const Columns stacks = stacks_of(columns);
        const Stack* const band = &at(0, top / band_rows);
        const Stack* const other = &others.at(0, top / band_rows);
        for (int row = 0; row < band_rows / side; ++row) {
            const auto has = [&](int stack) {
                return (band[stack] & other[stack] & 1U << row) != 0;
            };
            for (int left = stacks.left; left < stacks.right; ++left) {
                if (!has(left)) {
                    continue;
                }
                const int first = left;
                while (left < stacks.right && has(left)) {
                    ++left;
                }
                const int y = top + row * side;
                visit(Rectangle{first * side, y, left * side, y + side});
            }
        }
    }

    /// Rectangles of pixels on the surface that hold every tile of the set and little besides. They
    /// stand in rows of equal height, from the top and in a row from the left, with room between
    /// those of a row.
    [[nodiscard]] std::vector<Rectangle> rectangles() const;

private:
    [[nodiscard]] Columns stacks_of(Columns columns) const;
    [[nodiscard]] Stack& at(int stack, int band) { return stacks_[index(stack, band)]; }
    [[nodiscard]] const Stack& at(int stack, int band) const { return stacks_[index(stack, band)]; }
    [[nodiscard]] std::size_t index(int stack, int band) const {
        return static_cast<std::size_t>(band) * static_cast<std::size_t>(wide_) +
               static_cast<std::size_t>(stack);
    }

    int width_;
    int height_;
    int wide_; ///< stacks of a band
    int bands_;
    std::vector<Stack> stacks_;
};

} // namespace kv408
