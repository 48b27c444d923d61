#include "calibration/record_values.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kv408 {
namespace {

constexpr CalibrationRecord some = {2033,  2081, 2058, 2059, 10100, 9900,
                                    10050, 9950, 9951, 100,  70};

TEST(RecordValues, TheValuesStandOneAfterTheOtherInTheFlash) {
    EXPECT_EQ(record_address(0), 0xA400);
    EXPECT_EQ(record_address(10), 0xA40A);
}

TEST(RecordValues, AWordIsANumberWithSign) {
    EXPECT_EQ(value_of_word(0x0800), 2048);
    EXPECT_EQ(value_of_word(0xFFFF), -1);
    EXPECT_EQ(value_of_word(0x8000), -32768);
    EXPECT_EQ(word_of_value(-1), 0xFFFF);
    EXPECT_EQ(word_of_value(10000), 0x2710);
}

TEST(RecordValues, DifferencesAreNamed) {
    EXPECT_EQ(differences(some, some), "");
    CalibrationRecord held = some;
    held[0] = 2000;
    held[10] = 71;
    EXPECT_EQ(differences(some, held),
              "CH1 offset, low gain is 2000 and not 2033; ADC delay is 71 and not 70");
}

TEST(RecordValues, OfManyDifferencesTheFirstAreNamedAndTheOthersCounted) {
    CalibrationRecord held = some;
    for (std::int32_t& value : held) {
        ++value;
    }
    EXPECT_EQ(differences(some, held), "CH1 offset, low gain is 2034 and not 2033; CH1 offset, "
                                       "high gain is 2082 and not 2081 and 9 more");
}

TEST(RecordValues, AListIsCutAfterTwo) {
    const std::vector<std::string> items = {"a", "b", "c"};
    EXPECT_EQ(first_few(std::span(items).first(0)), "");
    EXPECT_EQ(first_few(std::span(items).first(1)), "a");
    EXPECT_EQ(first_few(std::span(items).first(2)), "a; b");
    EXPECT_EQ(first_few(items), "a; b and 1 more");
}

const InstrumentIdentity instrument = {.serial = "SERIAL1", .hardware = "408", .firmware = "16"};

std::string file() {
    return record_file({.values = some, .instrument = instrument});
}

/// The values in `bytes`; nothing when they are no record.
std::optional<CalibrationRecord> values_of(std::string_view bytes) {
    const auto kept = record_of_file(bytes);
    return kept ? std::optional(kept->values) : std::nullopt;
}

TEST(RecordValues, ARecordAndItsInstrumentSurviveTheirFile) {
    const std::string bytes = file();
    EXPECT_TRUE(bytes.starts_with("Kv408 calibration\nserial SERIAL1\nhardware 408\nfirmware 16\n"
                                  "0 2033 CH1 offset, low gain\n"))
        << bytes;
    EXPECT_TRUE(bytes.ends_with("\n10 70 ADC delay\nend\n")) << bytes;
    const auto kept = record_of_file(bytes);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->values, some);
    EXPECT_EQ(kept->instrument.serial, "SERIAL1");
    EXPECT_EQ(kept->instrument.hardware, "408");
    EXPECT_EQ(kept->instrument.firmware, "16");
    CalibrationRecord negative = some;
    negative[9] = -32768;
    EXPECT_EQ(values_of(record_file({.values = negative})), negative);
    EXPECT_EQ(record_of_file(record_file({.values = negative}))->instrument.serial, "");
}

TEST(RecordValues, AFileWithLineEndsOfAnotherSystemIsRead) {
    std::string bytes;
    for (const char character : file()) {
        bytes += character == '\n' ? "\r\n" : std::string(1, character);
    }
    const auto kept = record_of_file(bytes);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->values, some);
    EXPECT_EQ(kept->instrument.serial, "SERIAL1");
}

TEST(RecordValues, WhatFollowsTheEndIsNotLookedAt) {
    EXPECT_EQ(values_of(file() + "10 71 ADC delay\nmeasured on Monday\n"), some);
}

TEST(RecordValues, AFileThatWasCutOffAnywhereIsNoRecord) {
    const std::string bytes = file();
    // Without its last line end it still has its end mark.
    for (std::size_t length = 0; length + 1 < bytes.size(); ++length) {
        EXPECT_EQ(values_of(bytes.substr(0, length)), std::nullopt) << length;
    }
}

TEST(RecordValues, AFileThatLacksOrRepeatsAValueIsNoRecord) {
    const std::string bytes = file();
    const std::string open = bytes.substr(0, bytes.size() - std::string("end\n").size());
    EXPECT_EQ(values_of(open + "end\n"), some);
    EXPECT_EQ(values_of("some letter\nwith text\n"), std::nullopt);
    EXPECT_EQ(values_of("Another heading\n" + bytes.substr(bytes.find('\n') + 1)), std::nullopt);
    std::string lacking = bytes;
    EXPECT_EQ(values_of(lacking.erase(lacking.find("4 10100"), 8)), std::nullopt);
    EXPECT_EQ(values_of(open + "3 2059\nend\n"), std::nullopt);
    EXPECT_EQ(values_of(open + "11 5\nend\n"), std::nullopt);
    EXPECT_EQ(values_of(open + "-1 5\nend\n"), std::nullopt);
    std::string word = bytes;
    EXPECT_EQ(values_of(word.replace(word.find("10100"), 5, "hello")), std::nullopt);
    std::string large = bytes;
    EXPECT_EQ(values_of(large.replace(large.find("10100"), 5, "40000")), std::nullopt);
}

TEST(RecordValues, AFileWithAValueWithoutItsNumberIsNoRecord) {
    for (const char* place : {"\n0 2033", "\n5 9900", "\n10 70"}) {
        for (const char* number : {"x", "", "65536", "-65536"}) {
            std::string bytes = file();
            const std::size_t at = bytes.find(place) + 1;
            bytes.replace(at, bytes.find(' ', at) - at, number);
            EXPECT_EQ(values_of(bytes), std::nullopt) << bytes;
        }
    }
}

TEST(RecordValues, InstrumentsAreToldApartByWhatIsKnownOfThem) {
    EXPECT_TRUE(may_be_the_same(instrument, instrument));
    EXPECT_TRUE(may_be_the_same(instrument, {}));
    EXPECT_TRUE(may_be_the_same({}, instrument));
    InstrumentIdentity renewed = instrument;
    renewed.firmware = "17";
    EXPECT_TRUE(may_be_the_same(instrument, renewed));
    InstrumentIdentity other = instrument;
    other.serial = "SERIAL2";
    EXPECT_FALSE(may_be_the_same(instrument, other));
    other = instrument;
    other.hardware = "409";
    EXPECT_FALSE(may_be_the_same(instrument, other));
}

} // namespace
} // namespace kv408
