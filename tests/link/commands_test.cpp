#include "link/commands.h"

#include <gtest/gtest.h>

namespace kv408 {
namespace {

/// What a command before left behind.
constexpr CommandArguments left_behind = {90, 91, 92, 93, 94, 95};

TEST(Commands, HaveTheirCodes) {
    EXPECT_EQ(command::set_trigger, 8);
    EXPECT_EQ(command::set_amplifier_gain, 9);
    EXPECT_EQ(command::fetch_sample, 26);
    EXPECT_EQ(command::set_trigger_timeout, 27);
    EXPECT_EQ(command::set_offset_ch1, 30);
    EXPECT_EQ(command::set_resolution, 31);
    EXPECT_EQ(command::start_sweep, 32);
    EXPECT_EQ(command::set_offset_ch2, 35);
}

struct TriggerRow {
    TriggerSetup trigger = {};
    CommandArguments arguments = {};
};

TEST(TriggerCommand, FillsLevelSourceAndEdgeCodeAndHysteresis) {
    const TriggerRow rows[] = {
        {{.level = 0, .trig1 = true, .positive = true, .hysteresis = 0}, {90, 0, 0, 1, 0, 255}},
        {{.level = 2048, .trig1 = true, .positive = true, .hysteresis = 10},
         {90, 8, 0, 1, 10, 255}},
        {{.level = 2148, .trig1 = true, .positive = false, .hysteresis = 10},
         {90, 8, 100, 2, 10, 255}},
        {{.level = 2048, .trig1 = false, .positive = true, .hysteresis = 10},
         {90, 8, 0, 21, 255, 10}},
        {{.level = 2048, .trig1 = false, .positive = false, .hysteresis = 200},
         {90, 8, 0, 22, 255, 200}},
        // A negative level goes out as its two's complement.
        {{.level = -1, .trig1 = true, .positive = true, .hysteresis = 255},
         {90, 255, 255, 1, 255, 255}},
        {{.level = -256, .trig1 = true, .positive = true, .hysteresis = 1},
         {90, 255, 0, 1, 1, 255}},
        {{.level = -32768, .trig1 = false, .positive = false, .hysteresis = 0},
         {90, 128, 0, 22, 255, 0}},
    };
    for (const TriggerRow& row : rows) {
        CommandArguments arguments = left_behind;
        fill_trigger(arguments, row.trigger);
        EXPECT_EQ(arguments, row.arguments)
            << "level " << row.trigger.level << ", hysteresis " << row.trigger.hysteresis;
    }
}

struct TimeoutRow {
    const char* text;
    std::int32_t timeout;
    std::int16_t high;
    std::int16_t low;
};

TEST(TriggerTimeout, IsTheLeadingNumberWithinItsLimits) {
    const TimeoutRow rows[] = {
        {"1000", 1000, 3, 232},
        {"5", 10, 0, 10},
        {"3", 10, 0, 10},
        {"10", 10, 0, 10},
        {"11", 11, 0, 11},
        {"65535", 65535, 255, 255},
        {"70000", 65535, 255, 255},
        {"100000", 65535, 255, 255},
        {"99999999999", 65535, 255, 255},
        {"1e999", 65535, 255, 255},
        {"-1e999", 10, 0, 10},
        {"-500", 10, 0, 10},
        {"abc", 10, 0, 10},
        {"", 10, 0, 10},
        {"  250 us", 250, 0, 250},
        {"12.5", 12, 0, 12},
        {"13.5", 14, 0, 14},
        {"1e3", 1000, 3, 232},
    };
    for (const TimeoutRow& row : rows) {
        const std::int32_t timeout = trigger_timeout(row.text);
        EXPECT_EQ(timeout, row.timeout) << row.text;
        CommandArguments arguments = {90, 8, 0, 21, 255, 10};
        fill_trigger_timeout(arguments, timeout);
        EXPECT_EQ(arguments, (CommandArguments{90, row.high, row.low, 21, 255, 10})) << row.text;
    }
}

TEST(GainCommand, FillsBothRangesAndThreeZeros) {
    for (const std::int16_t first : {std::int16_t{1}, std::int16_t{2}}) {
        for (const std::int16_t second : {std::int16_t{1}, std::int16_t{2}}) {
            CommandArguments arguments = left_behind;
            fill_gain(arguments, {first, second});
            arguments[0] = 0;
            EXPECT_EQ(arguments, (CommandArguments{0, first, second, 0, 0, 0}));
        }
    }
}

struct ResolutionRow {
    std::int32_t picoseconds;
    CommandArguments arguments;
};

TEST(ResolutionCommand, FillsThirtyTwoBitsWithZeroSentAsOne) {
    const ResolutionRow rows[] = {
        {0, {90, 0, 0, 0, 1, 95}},
        {1, {90, 0, 0, 0, 1, 95}},
        {313, {90, 0, 0, 1, 57, 95}},
        {780125, {90, 0, 11, 231, 93, 95}},
        {1562500, {90, 0, 23, 215, 132, 95}}, // 23 * 65536 + 215 * 256 + 132
    };
    for (const ResolutionRow& row : rows) {
        CommandArguments arguments = left_behind;
        fill_resolution(arguments, row.picoseconds);
        EXPECT_EQ(arguments, row.arguments) << row.picoseconds;
    }
}

TEST(SweepCommand, AsksFor650PointsWithItsThreeChoices) {
    for (const bool average : {false, true}) {
        for (const bool speed : {false, true}) {
            for (const Channel channel : both_channels) {
                CommandArguments arguments = left_behind;
                fill_sweep(arguments, {.average = average, .speed = speed, .channel = channel});
                EXPECT_EQ(arguments,
                          (CommandArguments{90, 2, 138, static_cast<std::int16_t>(average ? 1 : 0),
                                            static_cast<std::int16_t>(speed ? 1 : 0),
                                            static_cast<std::int16_t>(channel == ch1 ? 1 : 2)}));
            }
        }
    }
}

struct SampleRow {
    PointDelay delay = {};
    Channel channel = ch1;
    CommandArguments arguments = {};
};

TEST(SampleCommand, FillsBothPositionsAndTheFineByte) {
    const SampleRow rows[] = {
        {{.coarse = 10500, .second = 1, .fine = 240}, ch1, {90, 41, 4, 0, 1, 240}},
        // Channel 2 sets bit 15 of the first position: 10500 + 32768 = 43268.
        {{.coarse = 10500, .second = 1, .fine = 240}, ch2, {90, 169, 4, 0, 1, 240}},
        {{.coarse = 3500, .second = 5936, .fine = 246}, ch1, {90, 13, 172, 23, 48, 246}},
        {{.coarse = 0, .second = 65535, .fine = 0}, ch2, {90, 128, 0, 255, 255, 0}},
    };
    for (const SampleRow& row : rows) {
        CommandArguments arguments = left_behind;
        fill_sample(arguments, row.delay, row.channel);
        EXPECT_EQ(arguments, row.arguments) << row.delay.coarse << ", channel " << row.channel;
    }
}

} // namespace
} // namespace kv408
