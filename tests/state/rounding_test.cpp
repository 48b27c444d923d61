#include "state/rounding.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(Rounding, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(round_half_even(0.5), 0.0);
    EXPECT_EQ(round_half_even(1.5), 2.0);
    EXPECT_EQ(round_half_even(2.5), 2.0);
    EXPECT_EQ(round_half_even(-0.5), 0.0);
    EXPECT_EQ(round_half_even(-1.5), -2.0);
    EXPECT_EQ(round_half_even(-2.5), -2.0);
    EXPECT_EQ(round_half_even(2.4999999999), 2.0);
    EXPECT_EQ(round_half_even(2.5000000001), 3.0);
    EXPECT_EQ(round_half_even(1e300), 1e300);
}

TEST(Rounding, NarrowTypesHoldTheirRange) {
    EXPECT_EQ(round_to_int32(2147483647.4), 2147483647);
    EXPECT_EQ(round_to_int32(1e12), 2147483647);
    EXPECT_EQ(round_to_int32(-1e12), -2147483647 - 1);
    EXPECT_EQ(round_to_int32(std::numeric_limits<double>::infinity()), 2147483647);
    EXPECT_EQ(round_to_int32(std::nan("")), 0);
    EXPECT_EQ(round_to_int16(32767.5), 32767);
    EXPECT_EQ(round_to_int16(-32769.0), -32768);
    EXPECT_EQ(round_to_int16(-5952.0), -5952);
}

TEST(LeadingNumber, TakesWhatStandsInFront) {
    EXPECT_EQ(leading_number("120"), 120.0);
    EXPECT_EQ(leading_number("  120ps"), 120.0);
    EXPECT_EQ(leading_number("-7.5 "), -7.5);
    EXPECT_EQ(leading_number("+3"), 3.0);
    EXPECT_EQ(leading_number(".5"), 0.5);
    EXPECT_EQ(leading_number("1.5e3x"), 1500.0);
    EXPECT_EQ(leading_number("1,5"), 1.0);
}

TEST(LeadingNumber, WithoutANumberItIsZero) {
    for (const char* text : {"", "   ", "ps", "-", ".", "inf", "nan", "-inf", "e5", "--3"}) {
        EXPECT_EQ(leading_number(text), 0.0) << text;
    }
}

TEST(LeadingNumber, BeyondADoubleItIsTheLargestOrZero) {
    EXPECT_EQ(leading_number("1e999"), std::numeric_limits<double>::max());
    EXPECT_EQ(leading_number("-1e999"), -std::numeric_limits<double>::max());
    EXPECT_EQ(leading_number("1e-999"), 0.0);
}

TEST(WholeNumberText, IsOneNumberAndNothingElse) {
    EXPECT_EQ(entire_number("120"), 120.0);
    EXPECT_EQ(entire_number("  -7.5  "), -7.5);
    EXPECT_EQ(entire_number("1.5e3"), 1500.0);
    for (const char* text :
         {"", " ", "120ps", "1 2", "x", "1e", "--1", "inf", "nan", "1,5", "0x1"}) {
        EXPECT_EQ(entire_number(text), std::nullopt) << text;
    }
}

TEST(NumbersInText, AreRoundedAndRefusedBeyondTheirType) {
    EXPECT_EQ(int16_in(" 2.5 "), 2);
    EXPECT_EQ(int16_in("3.5"), 4);
    EXPECT_EQ(int16_in("32767.4"), 32767);
    EXPECT_EQ(int16_in("32767.5"), std::nullopt);
    EXPECT_EQ(int16_in("-32768.5"), -32768);
    EXPECT_EQ(int16_in("-32769"), std::nullopt);
    EXPECT_EQ(int16_in("x"), std::nullopt);
    EXPECT_EQ(int32_in("2147483647"), 2147483647);
    EXPECT_EQ(int32_in("2147483648"), std::nullopt);
    EXPECT_EQ(int32_in("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(int32_in("-2147483649"), std::nullopt);
    EXPECT_EQ(int32_in("1e400"), std::nullopt);
    EXPECT_EQ(int32_in("1e-400"), 0);
}

} // namespace
} // namespace kv408
