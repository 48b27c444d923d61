#include "state/colour.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(Colour, HasRedInTheLowByte) {
    EXPECT_EQ(rgb(1, 2, 3).value, 0x030201U);
    EXPECT_EQ(red_of(rgb(1, 2, 3)), 1);
    EXPECT_EQ(green_of(rgb(1, 2, 3)), 2);
    EXPECT_EQ(blue_of(rgb(1, 2, 3)), 3);
}

TEST(Colour, FactoryTable) {
    const ColourTable table;
    EXPECT_EQ(table.ch1, rgb(255, 255, 0));
    EXPECT_EQ(table.ch2, rgb(128, 220, 255));
    EXPECT_EQ(table.background, rgb(0, 0, 0));
    EXPECT_EQ(table.normal_text, rgb(255, 255, 255));
    EXPECT_EQ(table.grid, rgb(92, 92, 92));
    EXPECT_EQ(table.text_background, rgb(0, 0, 0));
    EXPECT_EQ(table.annotations, rgb(255, 128, 128));
}

} // namespace
} // namespace kv408
