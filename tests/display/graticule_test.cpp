#include "display/graticule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "sketch.h"
#include "state/plot_geometry.h"

namespace kv408::test {
namespace {

Surface graticule(bool dotted) {
    Surface surface(plot::width, plot::height);
    draw_graticule(UnitPainter(Canvas(surface), PlotScale()), red, white, dotted);
    return surface;
}

/// Columns of row `y` that are drawn, between the borders.
std::vector<int> drawn_columns(const Surface& surface, int y) {
    std::vector<int> columns;
    for (int x = 1; x < 640; ++x) {
        if (surface.at(x, y) == white) {
            columns.push_back(x);
        }
    }
    return columns;
}

auto count(const Surface& surface) {
    return std::count(surface.pixels().begin(), surface.pixels().end(), white);
}

const std::vector<int> fifths_across{
    13,  26,  38,  51,  64,  77,  90,  102, 115, 128, 141, 154, 166, 179, 192, 205, 218,
    230, 243, 256, 269, 282, 294, 307, 320, 333, 346, 358, 371, 384, 397, 410, 422, 435,
    448, 461, 474, 486, 499, 512, 525, 538, 550, 563, 576, 589, 602, 614, 627};

TEST(Graticule, without_dots_is_the_border_alone) {
    const Surface surface = graticule(false);
    // Two rows of 641 and two columns of the 511 between them.
    EXPECT_EQ(count(surface), 2 * 641 + 2 * 511);
    for (const Point corner : {Point{0, 0}, Point{640, 0}, Point{640, 512}, Point{0, 512}}) {
        EXPECT_EQ(surface.at(corner.x, corner.y), white);
    }
    EXPECT_EQ(surface.at(1, 1), red);
    EXPECT_EQ(std::count(surface.pixels().begin(), surface.pixels().end(), red),
              641 * 513 - (2 * 641 + 2 * 511));
}

TEST(Graticule, has_dots_a_fifth_of_a_division_apart) {
    const Surface surface = graticule(true);
    for (const int row : {64, 128, 192, 320, 384, 448}) {
        // The left, centre and right ticks lie on these rows, as every fifth dot of a column does.
        std::vector<int> expected{1, 2, 3, 317, 318, 319, 321, 322, 323, 637, 638, 639};
        expected.insert(expected.end(), fifths_across.begin(), fifths_across.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(drawn_columns(surface, row), expected) << row;
    }
    // Row 100 holds none of a column's dots: 89.6 and 102.4 round to 90 and 102.
    EXPECT_TRUE(drawn_columns(surface, 100).empty());
    EXPECT_EQ(drawn_columns(surface, 90),
              (std::vector<int>{1,   2,   3,   64,  128, 192, 256, 317, 318, 319, 320,
                                321, 322, 323, 384, 448, 512, 576, 637, 638, 639}));
}

TEST(Graticule, has_ticks_of_seven_pixels_on_the_centre_lines_and_of_four_on_the_edges) {
    const Surface surface = graticule(true);
    for (const int y : {1, 2, 3, 253, 254, 255, 257, 258, 259, 509, 510, 511}) {
        EXPECT_EQ(drawn_columns(surface, y), fifths_across) << y;
    }
    for (const int y : {4, 252, 260, 508}) {
        EXPECT_TRUE(drawn_columns(surface, y).empty()) << y;
    }
}

// Between the borders: 7 rows of 49 dots and 9 columns of 39, 63 of them in both. The ticks add 3
// rows of 49 at the top and at the bottom and 6 at the centre, 3 columns of 39 at the left and at
// the right and 6 at the centre; the row and the column on the centre lines are the dots'.
TEST(Graticule, has_so_many_pixels) {
    constexpr int border = 2 * 641 + 2 * 511;
    constexpr int dots = 7 * 49 + 9 * 39 - 63;
    constexpr int ticks = 12 * 49 + 12 * 39;
    EXPECT_EQ(count(graticule(true)), border + dots + ticks);
}

} // namespace
} // namespace kv408::test
