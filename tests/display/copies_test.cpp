#include "display/copies.h"

#include <gtest/gtest.h>

#include <limits>

#include "display/shapes.h"
#include "sketch.h"

namespace kv408::test {
namespace {

/// A red surface with white in the middle row and a black pixel in its centre.
Surface source() {
    Surface surface(3, 3);
    fill_rectangle(Canvas(surface), {0, 0, 3, 3}, red);
    fill_rectangle(Canvas(surface), {0, 1, 3, 2}, white);
    surface.at(1, 1) = black;
    return surface;
}

/// A green surface.
Surface target(int width, int height) {
    Surface surface(width, height);
    fill_rectangle(Canvas(surface), whole(surface), green);
    return surface;
}

TEST(Copy, of_a_whole_surface) {
    Surface surface = target(3, 3);
    copy_block(Canvas(surface), {}, source(), {0, 0, 3, 3});
    EXPECT_EQ(sketch(surface), (Rows{"rrr", "#.#", "rrr"}));
}

TEST(Copy, of_a_part_to_a_place) {
    Surface surface = target(4, 3);
    copy_block(Canvas(surface), {2, 1}, source(), {1, 1, 3, 3});
    EXPECT_EQ(sketch(surface), (Rows{"gggg", "gg.#", "ggrr"}));
}

TEST(Copy, is_clipped_on_both_sides) {
    Surface surface = target(4, 3);
    copy_block(Canvas(surface), {-1, 0}, source(), {-1, -1, 9, 9});
    EXPECT_EQ(sketch(surface), (Rows{"gggg", "rrrg", "#.#g"}));
    surface = target(4, 3);
    copy_block(Canvas(surface), {3, 2}, source(), {0, 0, 3, 3});
    EXPECT_EQ(sketch(surface), (Rows{"gggg", "gggg", "gggr"}));
    surface = target(4, 3);
    copy_block(Canvas(surface, {1, 2}), {}, source(), {0, 0, 3, 3});
    EXPECT_EQ(sketch(surface), (Rows{"grgg", "g.gg", "grgg"}));
}

TEST(Copy, from_or_to_far_away_copies_nothing) {
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    Surface surface = target(2, 2);
    const Rectangle everything{lowest, lowest, highest, highest};
    copy_block(Canvas(surface), {highest, highest}, source(), everything);
    copy_block(Canvas(surface), {lowest, lowest}, source(), {0, 0, 3, 3});
    copy_block(Canvas(surface), {}, source(), {highest - 2, 0, highest, 2});
    copy_transparent(Canvas(surface), {highest, lowest}, source(), everything, white);
    EXPECT_EQ(sketch(surface), (Rows{"gg", "gg"}));
}

TEST(TransparentCopy, leaves_the_canvas_where_the_source_has_the_key) {
    Surface surface = target(3, 3);
    copy_transparent(Canvas(surface), {}, source(), {0, 0, 3, 3}, red);
    EXPECT_EQ(sketch(surface), (Rows{"ggg", "#.#", "ggg"}));
    copy_transparent(Canvas(surface), {1, 1}, source(), {0, 0, 3, 3}, white);
    EXPECT_EQ(sketch(surface), (Rows{"ggg", "#rr", "gg."}));
}

} // namespace
} // namespace kv408::test
