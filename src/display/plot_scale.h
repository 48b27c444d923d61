#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "display/surface.h"

namespace kv408 {

/// Rows that a run of pixels covers in one column, `top` included, `end` not; none when both are
/// equal.
struct RowRun {
    std::int16_t top = 0;
    std::int16_t end = 0;

    friend constexpr bool operator==(const RowRun&, const RowRun&) = default;
};

/// No row: extending it by one gives that row alone.
inline constexpr RowRun no_rows{std::numeric_limits<std::int16_t>::max(),
                                std::numeric_limits<std::int16_t>::min()};

/// Makes `run` reach from `top`, or above, to `end`, or below.
constexpr void extend(RowRun& run, int top, int end) {
    run.top = std::min(run.top, static_cast<std::int16_t>(top));
    run.end = std::max(run.end, static_cast<std::int16_t>(end));
}

/// Where the plot's units, 641 columns by 513 rows, lie on a surface that shows the plot at some
/// scale. At scale 1, the natural size, a unit is a pixel.
class PlotScale {
public:
    static constexpr double natural = 1.0;
    static constexpr double largest = 8.0;

    /// The scale `factor`, pixels per unit, held within 1..8.
    explicit PlotScale(double factor = natural);

    [[nodiscard]] double factor() const { return factor_; }

    /// Size of a surface that shows the whole plot.
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }

    /// Width of a line, pixels.
    [[nodiscard]] int line_width() const { return line_width_; }

    /// The pixel, of a row or a column, in which the middle of unit `unit` lies; of a fraction of a
    /// unit, the pixel that is nearest at natural size, halves to even.
    [[nodiscard]] std::int32_t place(double unit) const;

    /// The pixel edge nearest to the beginning of unit `unit`.
    [[nodiscard]] std::int32_t edge(double unit) const;

    friend bool operator==(const PlotScale& a, const PlotScale& b) {
        return a.factor_ == b.factor_;
    }

private:
    double factor_;
    int width_;
    int height_;
    int line_width_;
};

/// A disc as wide as a line: what a line is drawn with, and what a dot looks like.
class Brush {
public:
    /// A disc of `width` pixels: all whose centres lie in or on the circle.
    explicit Brush(int width);

    [[nodiscard]] int width() const { return static_cast<int>(columns_.size()); }

    /// Pixels left of and above the one that the brush is put to.
    [[nodiscard]] int before() const { return width() / 2; }

    /// Its columns from the left, with rows counted from the pixel that it is put to.
    [[nodiscard]] const std::vector<RowRun>& columns() const { return columns_; }

private:
    std::vector<RowRun> columns_;
};

} // namespace kv408
