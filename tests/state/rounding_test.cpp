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

TEST(WholeNumberText, IsANumberAndNothingElse) {
    EXPECT_EQ(whole_number_text("12"), 12.0);
    EXPECT_EQ(whole_number_text(" -1.5e1\t"), -15.0);
    EXPECT_EQ(whole_number_text("+.5"), 0.5);
    EXPECT_EQ(whole_number_text("1e999"), std::numeric_limits<double>::max());
    for (const char* const text : {"", "  ", "-", "12 V", "1 2", "x", "12.x", "inf", "nan"}) {
        EXPECT_EQ(whole_number_text(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace kv408
