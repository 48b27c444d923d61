#include <array>

#include <gtest/gtest.h>

#include "link/commands.h"
#include "link/device_link.h"

namespace kv408 {
namespace {

struct FrameRow {
    std::int16_t code;
    CommandArguments arguments;
    std::array<Byte, 8> frame;
};

TEST(Frame, IsTheStartByteTheCodeTheArgumentsAndTheLowByteOfTheirSum) {
    const FrameRow rows[] = {
        // 8 + 1 + 255 = 264
        {8, {0, 0, 0, 1, 0, 255}, {4, 8, 0, 0, 1, 0, 255, 8}},
        {0, {0, 0, 0, 0, 0, 0}, {4, 0, 0, 0, 0, 0, 0, 0}},
        // 35 + 5 * 255 = 1310 = 5 * 256 + 30
        {35, {0, 255, 255, 255, 255, 255}, {4, 35, 255, 255, 255, 255, 255, 30}},
        // 9 + 2 + 1 = 12
        {9, {0, 2, 1, 0, 0, 0}, {4, 9, 2, 1, 0, 0, 0, 12}},
        // 32 + 2 + 138 + 1 + 1 + 2 = 176
        {32, {0, 2, 138, 1, 1, 2}, {4, 32, 2, 138, 1, 1, 2, 176}},
        // 200 + 56 = 256
        {200, {0, 56, 0, 0, 0, 0}, {4, 200, 56, 0, 0, 0, 0, 0}},
    };
    for (const FrameRow& row : rows) {
        EXPECT_EQ(command_frame(row.code, row.arguments), row.frame) << "code " << row.code;
    }
}

TEST(Frame, ElementZeroOfTheArgumentsCarriesNothing) {
    EXPECT_EQ(command_frame(8, {77, 0, 0, 1, 0, 255}), command_frame(8, {0, 0, 0, 1, 0, 255}));
}

struct SplitRow {
    std::int32_t value;
    std::array<int, 4> bytes; ///< highest first
};

constexpr SplitRow split_rows[] = {
    {0, {0, 0, 0, 0}},
    {1, {0, 0, 0, 1}},
    {0x12345678, {0x12, 0x34, 0x56, 0x78}},
    {-1, {255, 255, 255, 255}},
    {-2147483647 - 1, {128, 0, 0, 0}},
    {2147483647, {127, 255, 255, 255}},
    {780125, {0, 11, 231, 93}}, // 11 * 65536 + 231 * 256 + 93
};

TEST(SplitLong, GivesTheFourBytesHighestFirst) {
    for (const SplitRow& row : split_rows) {
        std::uint8_t b3 = 0;
        std::uint8_t b2 = 0;
        std::uint8_t b1 = 0;
        std::uint8_t b0 = 0;
        splitlong(row.value, b3, b2, b1, b0);
        EXPECT_EQ((std::array<int, 4>{b3, b2, b1, b0}), row.bytes) << row.value;
    }
}

TEST(Arguments, ThirtyTwoBitsStandInOneToFourAndLeaveTheOthers) {
    for (const SplitRow& row : split_rows) {
        CommandArguments arguments = {90, 91, 92, 93, 94, 95};
        put_32_bits(arguments, row.value);
        const auto byte = [&](std::size_t index) {
            return static_cast<std::int16_t>(row.bytes[index]);
        };
        EXPECT_EQ(arguments, (CommandArguments{90, byte(0), byte(1), byte(2), byte(3), 95}))
            << row.value;
    }
}

TEST(Arguments, SixteenBitsAreTheLowOnesHighByteFirst) {
    CommandArguments arguments = {90, 91, 92, 93, 94, 95};
    put_16_bits(arguments, 1, 650);
    EXPECT_EQ(arguments, (CommandArguments{90, 2, 138, 93, 94, 95}));
    put_16_bits(arguments, 3, -1);
    EXPECT_EQ(arguments, (CommandArguments{90, 2, 138, 255, 255, 95}));
    put_16_bits(arguments, 4, 0x12345678);
    EXPECT_EQ(arguments, (CommandArguments{90, 2, 138, 255, 0x56, 0x78}));
}

} // namespace
} // namespace kv408
