#include "display/shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>

#include "sketch.h"

namespace kv408::test {
namespace {

TEST(FilledRectangle, leaves_its_right_and_bottom_edge_out) {
    Surface surface(5, 4);
    fill_rectangle(Canvas(surface), {1, 1, 4, 3}, white);
    EXPECT_EQ(sketch(surface), (Rows{".....", ".###.", ".###.", "....."}));
}

TEST(FilledRectangle, is_clipped_to_the_surface_and_to_the_columns) {
    Surface surface(4, 2);
    fill_rectangle(Canvas(surface), {2, 1, highest, highest}, white);
    EXPECT_EQ(sketch(surface), (Rows{"....", "..##"}));
    fill_rectangle(Canvas(surface, {1, 2}), {lowest, lowest, highest, highest}, red);
    EXPECT_EQ(sketch(surface), (Rows{".r..", ".r##"}));
}

TEST(FilledRectangle, has_no_pixel_when_empty_or_upside_down) {
    Surface surface(3, 3);
    for (const Rectangle area :
         {Rectangle{1, 0, 1, 3}, Rectangle{0, 1, 3, 1}, Rectangle{2, 0, 1, 3},
          Rectangle{0, 2, 3, 1}, Rectangle{9, 0, 12, 3}, Rectangle{-9, 0, -4, 3}}) {
        fill_rectangle(Canvas(surface), area, white);
        invert_rectangle(Canvas(surface), area);
        draw_ellipse(Canvas(surface), area, white, white);
    }
    EXPECT_EQ(sketch(surface), (Rows{"...", "...", "..."}));
}

TEST(InvertedRectangle, flips_the_colour_bits_inside_its_edges) {
    Surface surface(3, 2);
    surface.at(1, 0) = 0xFF123456U;
    invert_rectangle(Canvas(surface), {1, 0, 3, 1});
    EXPECT_EQ(surface.at(1, 0), 0xFFEDCBA9U);
    EXPECT_EQ(sketch(surface), (Rows{".?#", "..."}));
}

TEST(InvertedRectangle, twice_restores_the_pixels) {
    Surface surface(3, 1);
    surface.at(1, 0) = 0xFF123456U;
    surface.at(2, 0) = red;
    const Surface before = surface;
    invert_rectangle(Canvas(surface), {0, 0, 3, 1});
    EXPECT_NE(sketch(surface), sketch(before));
    invert_rectangle(Canvas(surface), {0, 0, 3, 1});
    EXPECT_TRUE(std::equal(before.pixels().begin(), before.pixels().end(),
                           std::as_const(surface).pixels().begin()));
}

TEST(Ellipse, of_eight_by_eight) {
    Surface surface(10, 10);
    draw_ellipse(Canvas(surface), {1, 1, 9, 9}, white, red);
    EXPECT_EQ(sketch(surface),
              (Rows{"..........", "...####...", "..#rrrr#..", ".#rrrrrr#.", ".#rrrrrr#.",
                    ".#rrrrrr#.", ".#rrrrrr#.", "..#rrrr#..", "...####...", ".........."}));
}

TEST(Ellipse, fits_into_a_flat_rectangle) {
    Surface surface(8, 4);
    draw_ellipse(Canvas(surface), {0, 0, 8, 4}, white, red);
    EXPECT_EQ(sketch(surface), (Rows{".######.", "#rrrrrr#", "#rrrrrr#", ".######."}));
}

TEST(Ellipse, of_one_row_or_column_is_a_line_and_of_one_pixel_a_dot) {
    Surface surface(5, 5);
    draw_ellipse(Canvas(surface), {0, 0, 5, 1}, white, red);
    draw_ellipse(Canvas(surface), {0, 2, 1, 5}, green, red);
    draw_ellipse(Canvas(surface), {3, 3, 4, 4}, red, white);
    EXPECT_EQ(sketch(surface), (Rows{"#####", ".....", "g....", "g..r.", "g...."}));
}

TEST(Ellipse, is_clipped_and_may_lie_anywhere) {
    Surface surface(4, 4);
    draw_ellipse(Canvas(surface), {-4, -4, 4, 4}, white, red);
    EXPECT_EQ(sketch(surface), (Rows{"rrr#", "rrr#", "rr#.", "##.."}));
    Surface far(2, 2);
    draw_ellipse(Canvas(far), {lowest, lowest, highest, highest}, white, red);
    EXPECT_EQ(sketch(far), (Rows{"rr", "rr"}));
}

} // namespace
} // namespace kv408::test
