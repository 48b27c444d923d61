// Numbers that are typed with a unit.

#include <clocale>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "state/rounding.h"

namespace kv408 {
namespace {

struct QuantityRow {
    const char* text;
    double value; ///< in the unit that is meant without one
};

TEST(Quantity, OfPicosecondsTakesItsThreeUnits) {
    const QuantityRow rows[] = {
        {"70", 70.0},         {"70ps", 70.0},        {"70ns", 70000.0},
        {"70us", 70.0e6},     {"1.5ns", 1500.0},     {".5ns", 500.0},
        {"5.ns", 5000.0},     {"0ns", 0.0},          {" 70 ns ", 70000.0},
        {"\t70\tps\t", 70.0}, {"70 NS", 70000.0},    {"70Ns", 70000.0},
        {"+3ns", 3000.0},     {"-3ns", -3000.0},     {"1e3ps", 1000.0},
        {"1E-3ns", 1.0},      {"3\xC2\xB5s", 3.0e6}, {"3 \xCE\xBCS", 3.0e6},
        {"007ns", 7000.0},    {"0.0005us", 500.0},   {"", 0.0},
        {"   ", 0.0},         {"12.5", 12.5},
    };
    for (const QuantityRow& row : rows) {
        const auto value = quantity_in(row.text, picosecond_units);
        ASSERT_TRUE(value.has_value()) << row.text;
        EXPECT_DOUBLE_EQ(*value, row.value) << row.text;
    }
}

TEST(Quantity, OfMicrosecondsTakesItsTwoUnits) {
    const QuantityRow rows[] = {{"2", 2.0},       {"2us", 2.0},        {"2ms", 2000.0},
                                {"2 MS", 2000.0}, {"0.05ms", 50.0},    {"65535 us", 65535.0},
                                {"-1ms", -1000},  {"3\xC2\xB5s", 3.0}, {"", 0.0}};
    for (const QuantityRow& row : rows) {
        const auto value = quantity_in(row.text, microsecond_units);
        ASSERT_TRUE(value.has_value()) << row.text;
        EXPECT_DOUBLE_EQ(*value, row.value) << row.text;
    }
}

TEST(Quantity, IsNothingWhereTheTextSaysNone) {
    for (const char* text :
         {"ns",      "abc",        "70x",     "70nss",   "70ns5",   "70 n s", "70 ps ps", "70ms",
          "70s",     "70n",        "n70s",    "1,5ns",   "1.5.5ns", "--3ns",  "-",        ".",
          "+ 3ns",   "70\nns",     "70ns\n",  "infns",   "nan",     "inf",    "0x10ns",   "1e",
          "1 000ns", "70\xC2\xB5", "70\xC2s", "70\xB5s", "ps70"}) {
        EXPECT_FALSE(quantity_in(text, picosecond_units).has_value()) << text;
    }
    for (const char* text : {"2ns", "2ps", "2s", "2m", "ms"}) {
        EXPECT_FALSE(quantity_in(text, microsecond_units).has_value()) << text;
    }
    EXPECT_FALSE(quantity_in(std::string("70\0ns", 5), picosecond_units).has_value());
    EXPECT_FALSE(quantity_in("70ps", {}).has_value());
}

TEST(Quantity, BeyondADoubleIsNoMoreThanInfinite) {
    EXPECT_GE(*quantity_in("1e999us", picosecond_units), std::numeric_limits<double>::max());
    EXPECT_LE(*quantity_in("-1e999us", picosecond_units), -std::numeric_limits<double>::max());
    EXPECT_EQ(*quantity_in("1e-999us", picosecond_units), 0.0);
}

TEST(Quantity, HasADecimalPointWhateverTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE", "German_Germany.1252", "C.UTF-8", "C"}) {
        if (std::setlocale(LC_ALL, name) == nullptr) {
            continue; // not every machine has every one; "C" is everywhere
        }
        EXPECT_EQ(quantity_in("1.5ns", picosecond_units), 1500.0) << name;
        EXPECT_FALSE(quantity_in("1,5ns", picosecond_units).has_value()) << name;
    }
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace
} // namespace kv408
