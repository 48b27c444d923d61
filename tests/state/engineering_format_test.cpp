#include "state/engineering_format.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

TEST(EngineeringFormat, CutsToTheDigitsAskedFor) {
    EXPECT_EQ(engformat(0.00123456, 4), "1.234m");
    EXPECT_EQ(engformat(0.00123456, 3), "1.23m");
    EXPECT_EQ(engformat(1.9999, 3), "1.99");
    EXPECT_EQ(engformat(-1.9999, 3), "-1.99");
    EXPECT_EQ(engformat(12.3456, 4), "12.34");
    EXPECT_EQ(engformat(123.456, 4), "123.4");
}

TEST(EngineeringFormat, APointAtTheEndIsDropped) {
    EXPECT_EQ(engformat(123.456, 3), "123");
    EXPECT_EQ(engformat(-999.9, 3), "-999");
    EXPECT_EQ(engformat(5.0, 1), "5");
}

TEST(EngineeringFormat, EveryPrefixBeginsAtItsPowerOfTen) {
    EXPECT_EQ(engformat(1e-12, 3), "1.00p");
    EXPECT_EQ(engformat(999e-12, 3), "999p");
    EXPECT_EQ(engformat(1e-9, 3), "1.00n");
    EXPECT_EQ(engformat(1e-6, 3), "1.00u");
    EXPECT_EQ(engformat(1e-3, 3), "1.00m");
    EXPECT_EQ(engformat(0.999, 3), "999m");
    EXPECT_EQ(engformat(1.0, 3), "1.00");
    EXPECT_EQ(engformat(999.0, 3), "999");
    EXPECT_EQ(engformat(1e3, 3), "1.00k");
    EXPECT_EQ(engformat(1e6, 3), "1.00M");
    EXPECT_EQ(engformat(1e9, 3), "1.00G");
    EXPECT_EQ(engformat(999.9e9, 4), "999.9G");
}

TEST(EngineeringFormat, ZeroAndLessThanAPicoIsZeroWithoutPrefix) {
    EXPECT_EQ(engformat(0.0, 4), "0.000");
    EXPECT_EQ(engformat(0.0, 3), "0.00");
    EXPECT_EQ(engformat(0.0, 1), "0");
    EXPECT_EQ(engformat(9.99e-13, 3), "0.00");
    EXPECT_EQ(engformat(-9.99e-13, 3), "0.00");
}

TEST(EngineeringFormat, ValuesGivenExactlyInDecimalComeOutAsGiven) {
    EXPECT_EQ(engformat(0.3, 4), "300.0m");
    EXPECT_EQ(engformat(0.1 + 0.2, 4), "300.0m");
    EXPECT_EQ(engformat(std::nextafter(0.3, 0.0), 4), "300.0m");
    for (int thousandths = 1; thousandths < 1000; ++thousandths) {
        const std::string digits = std::to_string(thousandths);
        const std::string milli = digits.size() == 3   ? digits
                                  : digits.size() == 2 ? digits + ".0"
                                                       : digits + ".00";
        EXPECT_EQ(engformat(thousandths / 1000.0, 3), milli + "m");
        EXPECT_EQ(engformat(thousandths * 1e-9, 3), milli + "n");
        EXPECT_EQ(engformat(thousandths * 1e6, 3), milli + "M");
    }
}

TEST(EngineeringFormat, SignPointAndLeadingZerosAreNoDigits) {
    EXPECT_EQ(engformat(-12.3456, 4), "-12.34");
    EXPECT_EQ(engformat(-0.00123456, 4), "-1.234m");
    EXPECT_EQ(engformat(0.0999, 3), "99.9m");
    EXPECT_EQ(engformat(0.001, 4), "1.000m");
    EXPECT_EQ(engformat(-250e-12, 2), "-250p");
}

TEST(EngineeringFormat, CutsWhatIsWrittenWithThreeDigitsMore) {
    // Seven digits after the point are written for four, six for three.
    EXPECT_EQ(engformat(1.2349999, 4), "1.234");
    EXPECT_EQ(engformat(1.23499994, 4), "1.234");
    EXPECT_EQ(engformat(1.23499996, 4), "1.235");
    EXPECT_EQ(engformat(1.239999, 3), "1.23");
    EXPECT_EQ(engformat(1.2399996, 3), "1.24");
    EXPECT_EQ(engformat(12.99996, 1), "13");
    EXPECT_EQ(engformat(12.9999, 1), "12");
}

TEST(EngineeringFormat, ThePrefixStaysWhenWritingCarriesOver) {
    EXPECT_EQ(engformat(0.9999999, 4), "999.9m");
    EXPECT_EQ(engformat(0.99999999996, 4), "1000m");
    EXPECT_EQ(engformat(-999999.9, 3), "-999k");
    EXPECT_EQ(engformat(-999999.9999996, 3), "-1000k");
}

TEST(EngineeringFormat, APrefixBeginsAtItsPowerHoweverABinaryFractionHoldsIt) {
    for (const double power : {1e-9, 1e-6, 1e-3, 1.0, 1e3, 1e6, 1e9}) {
        const std::string at = engformat(power, 4);
        EXPECT_EQ(at.substr(0, 5), "1.000");
        EXPECT_EQ(engformat(std::nextafter(power, 0.0), 4), at);
        EXPECT_EQ(engformat(-power, 4), std::string("-").append(at));
    }
    EXPECT_EQ(engformat(std::nextafter(1e-12, 0.0), 4), "0.000");
    EXPECT_EQ(engformat(-0.0, 4), "0.000");
}

TEST(EngineeringFormat, TakesEveryNumberOfDigits) {
    EXPECT_EQ(engformat(123.456789012, 9), "123.456789");
    EXPECT_EQ(engformat(123.456789012, 5), "123.45");
    EXPECT_EQ(engformat(123.456789012, 2), "123");
    EXPECT_EQ(engformat(1.5e-9, 9), "1.50000000n");
    EXPECT_EQ(engformat(0.0, 9), "0.00000000");
}

TEST(EngineeringFormat, DigitsBeforeThePointAlwaysStay) {
    EXPECT_EQ(engformat(12345e9, 3), "12345G");
    EXPECT_EQ(engformat(1e25, 4), "10000000000000000G");
}

TEST(PrintedNumber, HasASpaceInThePlaceOfTheSign) {
    EXPECT_EQ(printed_number(200), " 200");
    EXPECT_EQ(printed_number(0), " 0");
    EXPECT_EQ(printed_number(-7), "-7");
    EXPECT_EQ(printed_number(0.5), " 0.5");
}

} // namespace
} // namespace kv408
