#include "calibration/record_values.h"

#include <algorithm>
#include <array>
#include <limits>
#include <tuple>

#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 11> names = {"CH1 offset, low gain",
                                                    "CH1 offset, high gain",
                                                    "CH2 offset, low gain",
                                                    "CH2 offset, high gain",
                                                    "CH1 gain, low gain",
                                                    "CH1 gain, high gain",
                                                    "CH2 gain, low gain",
                                                    "CH2 gain, high gain",
                                                    "time-base scale",
                                                    "bridge offset",
                                                    "ADC delay"};

constexpr std::string_view blanks = " \t\r";

/// Cuts the first of the words in `line` off it; empty when there is none.
std::string_view take_word(std::string_view& line) {
    const auto start = line.find_first_not_of(blanks);
    line.remove_prefix(start == std::string_view::npos ? line.size() : start);
    const auto end = std::min(line.find_first_of(blanks), line.size());
    const std::string_view word = line.substr(0, end);
    line.remove_prefix(end);
    return word;
}

/// Cuts the first line off `bytes`.
std::string_view take_line(std::string_view& bytes) {
    const auto end = std::min(bytes.find('\n'), bytes.size());
    const std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    return line;
}

} // namespace

std::uint16_t record_address(std::size_t index) {
    return static_cast<std::uint16_t>(flash_address::record + index);
}

std::string_view record_value_name(std::size_t index) {
    return names.at(index);
}

std::int32_t value_of_word(std::uint16_t word) {
    return static_cast<std::int16_t>(word);
}

std::uint16_t word_of_value(std::int32_t value) {
    return static_cast<std::uint16_t>(value);
}

std::optional<std::int32_t> record_value(std::string_view text) {
    const auto number = whole_number_text(text);
    if (!number) {
        return std::nullopt;
    }
    const double rounded = round_half_even(*number);
    if (rounded < std::numeric_limits<std::int16_t>::min() ||
        rounded > std::numeric_limits<std::int16_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(rounded);
}

std::string differences(const CalibrationRecord& written, const CalibrationRecord& held) {
    std::string text;
    for (std::size_t index = 0; index < written.size(); ++index) {
        if (held.at(index) == written.at(index)) {
            continue;
        }
        text += text.empty() ? "" : "; ";
        text += names.at(index);
        text += " is ";
        text += std::to_string(held.at(index));
        text += " and not ";
        text += std::to_string(written.at(index));
    }
    return text;
}

std::string record_file(const CalibrationRecord& record) {
    std::string text = "Kv408 calibration\n";
    for (std::size_t index = 0; index < record.size(); ++index) {
        text += std::to_string(index);
        text += ' ';
        text += std::to_string(record.at(index));
        text += ' ';
        text += names.at(index);
        text += '\n';
    }
    return text;
}

std::optional<CalibrationRecord> record_of_file(std::string_view bytes) {
    take_line(bytes);
    std::array<std::optional<std::int32_t>, std::tuple_size_v<CalibrationRecord>> found = {};
    while (!bytes.empty()) {
        std::string_view line = take_line(bytes);
        const auto index = record_value(take_word(line));
        if (!index) {
            continue;
        }
        const auto value = record_value(take_word(line));
        const auto place = static_cast<std::size_t>(*index);
        if (*index < 0 || place >= found.size() || !value || found.at(place)) {
            return std::nullopt;
        }
        found.at(place) = value;
    }
    CalibrationRecord record = {};
    for (std::size_t index = 0; index < record.size(); ++index) {
        const auto& value = found.at(index);
        if (!value) {
            return std::nullopt;
        }
        record.at(index) = *value;
    }
    return record;
}

} // namespace kv408
