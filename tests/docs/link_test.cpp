// The chapter on the link says what the program sends.

#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>

#include <gmock/gmock.h>

#include "acquisition/point_delay.h"
#include "acquisition/sample_conversion.h"
#include "docs/documents.h"
#include "link/commands.h"
#include "link/device_link.h"
#include "panel/time_base.h"

namespace kv408::docs {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

std::string hex(const std::array<Byte, 8>& frame) {
    std::string text;
    for (const Byte byte : frame) {
        std::array<char, 4> digits = {};
        std::snprintf(digits.data(), digits.size(), "%02x", static_cast<unsigned>(byte));
        text += (text.empty() ? "" : " ") + std::string(digits.data());
    }
    return text;
}

class ManualLink : public testing::Test {
protected:
    /// The second cell of the table row that begins with `first`.
    [[nodiscard]] std::string beside(const std::string& first) const {
        for (const auto& row : rows_) {
            if (row.size() > 1 && row[0] == first) {
                return row[1];
            }
        }
        return "no row " + first;
    }

    const std::string page_ = read_text(root / "docs" / "manual" / "link.md");
    const std::vector<std::vector<std::string>> rows_ = table_rows(page_);
};

TEST_F(ManualLink, NamesEachCommandWithItsCode) {
    const std::string header = read_text(root / "src" / "link" / "commands.h");
    const std::regex constant(R"(inline constexpr std::int16_t (\w+) = (\d+);)");
    int commands = 0;
    for (std::sregex_iterator at(header.begin(), header.end(), constant), end; at != end; ++at) {
        std::string name = (*at)[1];
        std::replace(name.begin(), name.end(), '_', ' ');
        if (name != "command attempts") {
            EXPECT_EQ(beside((*at)[2]), name);
            ++commands;
        }
    }
    EXPECT_EQ(commands, 11);
}

TEST_F(ManualLink, ListsEachStepOfTheTimeBase) {
    ASSERT_EQ(time_base_rows().size(), 21U);
    for (const TimeBaseRow& row : time_base_rows()) {
        const auto resolution = std::to_string(static_cast<long>(row.tbresolution));
        std::array<char, 32> stretch = {};
        std::snprintf(stretch.data(), stretch.size(), "%.15g", row.hstretch);
        EXPECT_THAT(rows_,
                    Contains(ElementsAre(std::string(row.text), resolution, stretch.data())));
    }
}

TEST_F(ManualLink, ExampleOfASetUpIsWhatIsSent) {
    CommandArguments arguments = {};
    const auto sent = [&arguments](std::int16_t code) {
        return hex(command_frame(code, arguments));
    };
    fill_gain(arguments, {1, 2});
    EXPECT_EQ(beside("set amplifier gain"), sent(command::set_amplifier_gain));
    fill_trigger(arguments, {.level = 2148, .trig1 = false, .positive = true, .hysteresis = 10});
    EXPECT_EQ(beside("set trigger"), sent(command::set_trigger));
    fill_trigger_timeout(arguments, 1000);
    EXPECT_EQ(beside("set trigger timeout"), sent(command::set_trigger_timeout));
    put_32_bits(arguments, 25000);
    EXPECT_EQ(beside("set offset ch1"), sent(command::set_offset_ch1));
    put_32_bits(arguments, 0);
    EXPECT_EQ(beside("set offset ch2"), sent(command::set_offset_ch2));
    fill_resolution(arguments, 157);
    EXPECT_EQ(beside("set resolution"), sent(command::set_resolution));
    fill_sweep(arguments, {.channel = ch1});
    EXPECT_EQ(beside("start sweep of CH1"), sent(command::start_sweep));
}

TEST_F(ManualLink, ExamplesOfSingleFramesAreWhatIsSent) {
    CommandArguments arguments = {};
    fill_sample(arguments, point_delay(100, 15625.0), ch2);
    EXPECT_EQ(beside("fetch sample"), hex(command_frame(command::fetch_sample, arguments)));
    fill_flash_read(arguments, 0xA404);
    EXPECT_EQ(beside("read flash, CH1 gain, low gain"),
              hex(command_frame(command::read_flash, arguments)));
    fill_flash_write(arguments, 0xA404, 10100);
    EXPECT_EQ(beside("write flash, the same, 10100"),
              hex(command_frame(command::write_flash, arguments)));
    fill_flash_write(arguments, 0xA43F, 55);
    EXPECT_EQ(beside("write flash, the mark of a whole record"),
              hex(command_frame(command::write_flash, arguments)));
}

TEST_F(ManualLink, ExampleOfASampleIsWhatIsMadeOfIt) {
    EXPECT_THAT(plain(page_),
                HasSubstr("08 64: the word is 8 * 256 + 100 = 2148, 100 codes above 0 V, in high "
                          "gain 100 / 6 = 16.67 mV"));
    const std::int16_t word = sample_word(0x08, 0x64, block_high_byte_limit);
    EXPECT_EQ(word, 2148);
    EXPECT_NEAR(converted({.atten = 1.0 / 6.0}, word).mv, 16.67, 0.005);
}

} // namespace
} // namespace kv408::docs
