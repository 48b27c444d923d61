#include "calibration/record_values.h"

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

TEST(RecordValues, ATextIsAValueWhenAllOfItIsANumberOfSixteenBits) {
    EXPECT_EQ(record_value("2048"), 2048);
    EXPECT_EQ(record_value(" 2048 "), 2048);
    EXPECT_EQ(record_value("-5"), -5);
    EXPECT_EQ(record_value("+5"), 5);
    EXPECT_EQ(record_value("10.5"), 10);
    EXPECT_EQ(record_value("11.5"), 12);
    EXPECT_EQ(record_value("32767"), 32767);
    EXPECT_EQ(record_value("32768"), std::nullopt);
    EXPECT_EQ(record_value("-32768"), -32768);
    EXPECT_EQ(record_value("-32769"), std::nullopt);
    EXPECT_EQ(record_value("1e300"), std::nullopt);
    for (const char* const text : {"", " ", "-", "abc", "12a", "1 2", "0x10", "nan", "inf"}) {
        EXPECT_EQ(record_value(text), std::nullopt) << text;
    }
}

TEST(RecordValues, DifferencesAreNamed) {
    EXPECT_EQ(differences(some, some), "");
    CalibrationRecord held = some;
    held[0] = 2000;
    held[10] = 71;
    EXPECT_EQ(differences(some, held),
              "CH1 offset, low gain is 2000 and not 2033; ADC delay is 71 and not 70");
}

TEST(RecordValues, ARecordSurvivesItsFile) {
    const std::string bytes = record_file(some);
    EXPECT_NE(bytes.find("\n4 10100 CH1 gain, low gain\n"), std::string::npos) << bytes;
    EXPECT_EQ(record_of_file(bytes), some);
    CalibrationRecord negative = some;
    negative[9] = -32768;
    EXPECT_EQ(record_of_file(record_file(negative)), negative);
}

TEST(RecordValues, AFileWithLineEndsOfAnotherSystemIsRead) {
    std::string bytes;
    for (const char character : record_file(some)) {
        bytes += character == '\n' ? "\r\n" : std::string(1, character);
    }
    EXPECT_EQ(record_of_file(bytes), some);
}

TEST(RecordValues, AFileThatLacksOrRepeatsAValueIsNoRecord) {
    const std::string bytes = record_file(some);
    EXPECT_EQ(record_of_file(""), std::nullopt);
    EXPECT_EQ(record_of_file("some letter\nwith text\n"), std::nullopt);
    EXPECT_EQ(record_of_file(bytes.substr(0, bytes.find("10 70"))), std::nullopt);
    EXPECT_EQ(record_of_file(bytes + "3 2059\n"), std::nullopt);
    EXPECT_EQ(record_of_file(bytes + "11 5\n"), std::nullopt);
    EXPECT_EQ(record_of_file(bytes + "-1 5\n"), std::nullopt);
    std::string word = bytes;
    EXPECT_EQ(record_of_file(word.replace(word.find("10100"), 5, "hello")), std::nullopt);
    std::string large = bytes;
    EXPECT_EQ(record_of_file(large.replace(large.find("10100"), 5, "40000")), std::nullopt);
}

} // namespace
} // namespace kv408
