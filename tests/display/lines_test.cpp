#include "display/lines.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "sketch.h"

namespace kv408::test {
namespace {

const Brush thin(1);

Rows line_on(int width, int height, Point from, Point to, const Brush& brush = thin) {
    Surface surface(width, height);
    draw_line(Canvas(surface), from, to, brush, white);
    return sketch(surface);
}

TEST(Pixels, are_set_on_the_surface_and_ignored_beside_it) {
    Surface surface(3, 2);
    const Canvas canvas(surface);
    for (const Point point : {Point{2, 1}, Point{3, 1}, Point{2, 2}, Point{-1, 0}, Point{0, -1},
                              Point{lowest, lowest}, Point{highest, highest}}) {
        draw_dot(canvas, point, thin, white);
    }
    EXPECT_EQ(sketch(surface), (Rows{"...", "..#"}));
}

TEST(Pixels, outside_the_columns_of_a_canvas_stay) {
    Surface surface(4, 1);
    const Canvas canvas(surface, {1, 3});
    for (int x = 0; x < 4; ++x) {
        draw_dot(canvas, {x, 0}, thin, white);
    }
    EXPECT_EQ(sketch(surface), (Rows{".##."}));
}

TEST(Lines, leave_their_last_pixel_out) {
    EXPECT_EQ(line_on(5, 1, {0, 0}, {4, 0}), (Rows{"####."}));
    EXPECT_EQ(line_on(5, 1, {4, 0}, {0, 0}), (Rows{".####"}));
    EXPECT_EQ(line_on(1, 4, {0, 0}, {0, 3}), (Rows{"#", "#", "#", "."}));
    EXPECT_EQ(line_on(1, 4, {0, 3}, {0, 0}), (Rows{".", "#", "#", "#"}));
    EXPECT_EQ(line_on(3, 3, {0, 0}, {2, 2}), (Rows{"#..", ".#.", "..."}));
    EXPECT_EQ(line_on(3, 3, {0, 2}, {2, 0}), (Rows{"...", ".#.", "#.."}));
}

TEST(Lines, of_no_length_have_no_pixel) {
    EXPECT_EQ(line_on(3, 1, {1, 0}, {1, 0}), (Rows{"..."}));
}

// In columns 1 and 3 the line lies exactly between two rows.
TEST(Lines, wide_ones_take_the_upper_of_two_equally_near_rows) {
    EXPECT_EQ(line_on(5, 3, {0, 0}, {4, 2}), (Rows{"##...", "..##.", "....."}));
    EXPECT_EQ(line_on(5, 3, {4, 2}, {0, 0}), (Rows{".#...", "..##.", "....#"}));
    EXPECT_EQ(line_on(5, 3, {0, 2}, {4, 0}), (Rows{"...#.", ".##..", "#...."}));
    EXPECT_EQ(line_on(5, 3, {4, 0}, {0, 2}), (Rows{"...##", ".##..", "....."}));
}

// In rows 1 and 3 the line lies exactly between two columns.
TEST(Lines, high_ones_take_the_left_of_two_equally_near_columns) {
    EXPECT_EQ(line_on(3, 5, {0, 0}, {2, 4}), (Rows{"#..", "#..", ".#.", ".#.", "..."}));
    EXPECT_EQ(line_on(3, 5, {2, 4}, {0, 0}), (Rows{"...", "#..", ".#.", ".#.", "..#"}));
    EXPECT_EQ(line_on(3, 5, {2, 0}, {0, 4}), (Rows{"..#", ".#.", ".#.", "#..", "..."}));
    EXPECT_EQ(line_on(3, 5, {0, 4}, {2, 0}), (Rows{"...", ".#.", ".#.", "#..", "#.."}));
}

// A third of a row a column: 0, 1/3, 2/3, 1, 4/3, 5/3.
TEST(Lines, take_the_nearest_row) {
    EXPECT_EQ(line_on(7, 3, {0, 0}, {6, 2}), (Rows{"##.....", "..###..", ".....#."}));
}

TEST(Lines, have_the_same_pixels_in_both_directions_but_for_the_ends) {
    for (int x = -9; x <= 9; ++x) {
        for (int y = -9; y <= 9; ++y) {
            Surface there(20, 20);
            Surface back(20, 20);
            const Point from{10, 10};
            const Point to{10 + x, 10 + y};
            draw_line(Canvas(there), from, to, thin, white);
            draw_line(Canvas(back), to, from, thin, white);
            draw_dot(Canvas(there), to, thin, white);
            draw_dot(Canvas(back), from, thin, white);
            ASSERT_EQ(sketch(there), sketch(back)) << x << ", " << y;
        }
    }
}

TEST(Lines, of_a_wider_brush_cover_what_it_covers_at_each_pixel) {
    EXPECT_EQ(line_on(6, 4, {2, 2}, {4, 2}, Brush(2)),
              (Rows{"......", ".###..", ".###..", "......"}));
    EXPECT_EQ(line_on(5, 5, {2, 2}, {3, 3}, Brush(3)),
              (Rows{".....", ".###.", ".###.", ".###.", "....."}));
    // From beside the surface the brush reaches into it.
    EXPECT_EQ(line_on(3, 3, {-1, 0}, {-1, 2}, Brush(3)), (Rows{"#..", "#..", "#.."}));
}

TEST(Brushes, are_discs_of_their_width) {
    Surface surface(6, 6);
    draw_dot(Canvas(surface), {3, 3}, Brush(4), white);
    EXPECT_EQ(sketch(surface), (Rows{"......", "..##..", ".####.", ".####.", "..##..", "......"}));
    EXPECT_EQ(Brush(5).columns(),
              (std::vector<RowRun>{{-1, 2}, {-2, 3}, {-2, 3}, {-2, 3}, {-1, 2}}));
}

TEST(Lines, that_miss_the_surface_draw_nothing) {
    const Rows nothing{"...", "..."};
    EXPECT_EQ(line_on(3, 2, {-5, 0}, {0, 0}), nothing); // only its last pixel is on the surface
    EXPECT_EQ(line_on(3, 2, {3, 0}, {9, 0}), nothing);
    EXPECT_EQ(line_on(3, 2, {0, 2}, {3, 2}), nothing);
    EXPECT_EQ(line_on(3, 2, {0, -9}, {3, -1}), nothing);
    EXPECT_EQ(line_on(3, 2, {highest, lowest}, {highest, highest}), nothing);
}

TEST(Lines, over_all_of_the_coordinates_are_exact) {
    EXPECT_EQ(line_on(3, 3, {lowest, lowest}, {highest, highest}), (Rows{"#..", ".#.", "..#"}));
    EXPECT_EQ(line_on(3, 3, {highest, highest}, {lowest, lowest}), (Rows{"#..", ".#.", "..#"}));
    // Along the other diagonal x + y is -1, then 0: only the corner is on the surface.
    EXPECT_EQ(line_on(3, 3, {highest, lowest}, {lowest, highest}), (Rows{"...", "...", "..."}));
    EXPECT_EQ(line_on(3, 3, {highest, lowest + 1}, {lowest + 1, highest}),
              (Rows{"#..", "...", "..."}));
    // It rises by one row over 2^32 - 1 columns and passes the middle just before column 0.
    EXPECT_EQ(line_on(3, 2, {lowest, 0}, {highest, 1}), (Rows{"...", "###"}));
    EXPECT_EQ(line_on(3, 2, {lowest, 1}, {highest, 0}), (Rows{"###", "..."}));
    EXPECT_EQ(line_on(2, 2, {1, lowest}, {1, highest}), (Rows{".#", ".#"}));
}

TEST(Polylines, go_on_where_the_segment_before_left_off) {
    constexpr std::array<Point, 3> points{{{0, 0}, {2, 2}, {4, 0}}};
    Surface surface(5, 3);
    draw_polyline(Canvas(surface), points, thin, white);
    EXPECT_EQ(sketch(surface), (Rows{"#....", ".#.#.", "..#.."}));
}

// Each steep segment is divided between its two columns, the middle row to the left one.
TEST(Polylines, of_a_trace_divide_a_rise_between_its_columns) {
    constexpr std::array<Point, 3> points{{{0, 0}, {1, 4}, {2, 1}}};
    Surface surface(3, 5);
    draw_polyline(Canvas(surface), points, thin, white);
    EXPECT_EQ(sketch(surface), (Rows{"#..", "#..", "#.#", ".#.", ".#."}));
}

TEST(Polylines, of_less_than_two_points_have_no_pixel) {
    constexpr std::array<Point, 1> points{{{0, 0}}};
    Surface surface(1, 1);
    draw_polyline(Canvas(surface), points, thin, white);
    draw_polyline(Canvas(surface), {}, thin, white);
    EXPECT_EQ(sketch(surface), (Rows{"."}));
}

} // namespace
} // namespace kv408::test
