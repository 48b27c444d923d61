#include "display/persistence_colours.h"

#include <gtest/gtest.h>

namespace kv408::test {
namespace {

constexpr Colour black_colour = rgb(0, 0, 0);

std::vector<Colour> ramp(Colour channel, Colour background, int depth) {
    const PersistenceColours colours = persistence_colours(channel, background, depth);
    return {colours.begin(), colours.end()};
}

// 255 in steps of 63, one for each generation and one for the background: 63.75 goes down to 63.
TEST(PersistenceColours, fade_in_equal_whole_steps) {
    std::vector<Colour> expected(9, black_colour);
    expected[0] = rgb(192, 192, 0);
    expected[1] = rgb(129, 129, 0);
    expected[2] = rgb(66, 66, 0);
    EXPECT_EQ(ramp(rgb(255, 255, 0), black_colour, 3), expected);
}

TEST(PersistenceColours, of_depth_0_are_all_the_background) {
    EXPECT_EQ(ramp(rgb(255, 255, 0), rgb(1, 2, 3), 0), std::vector<Colour>(9, rgb(1, 2, 3)));
}

TEST(PersistenceColours, of_depth_8_leave_the_oldest_in_the_background) {
    const auto colours = ramp(rgb(90, 180, 9), black_colour, 8);
    EXPECT_EQ(colours[0], rgb(80, 160, 8));
    EXPECT_EQ(colours[7], rgb(10, 20, 1));
    EXPECT_EQ(colours[8], black_colour);
}

TEST(PersistenceColours, of_depth_9_fade_to_the_last) {
    const auto colours = ramp(rgb(100, 200, 10), black_colour, 9);
    EXPECT_EQ(colours[0], rgb(90, 180, 9));
    EXPECT_EQ(colours[8], rgb(10, 20, 1));
}

TEST(PersistenceColours, of_a_channel_like_the_background_are_the_background) {
    EXPECT_EQ(ramp(rgb(7, 8, 9), rgb(7, 8, 9), 5), std::vector<Colour>(9, rgb(7, 8, 9)));
}

// -50 in four steps is -12.5, rounded toward minus infinity to -13.
TEST(PersistenceColours, rise_where_the_channel_is_darker_than_the_background) {
    const auto colours = ramp(rgb(50, 100, 0), rgb(100, 50, 0), 3);
    EXPECT_EQ(colours[0], rgb(63, 88, 0));
    EXPECT_EQ(colours[1], rgb(76, 76, 0));
    EXPECT_EQ(colours[2], rgb(89, 64, 0));
    EXPECT_EQ(colours[3], rgb(100, 50, 0));
}

// -1 in ten steps is rounded to -1 a step: 254 + 9 would leave the byte.
TEST(PersistenceColours, stay_within_a_byte) {
    const auto colours = ramp(rgb(254, 254, 254), rgb(255, 255, 255), 9);
    EXPECT_EQ(colours[0], rgb(255, 255, 255));
    EXPECT_EQ(colours[8], rgb(255, 255, 255));
}

} // namespace
} // namespace kv408::test
