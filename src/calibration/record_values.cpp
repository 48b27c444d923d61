#include "calibration/record_values.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>
#include <vector>

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

// A file without its last line has been cut off, perhaps in the middle of a number.
constexpr std::string_view first_line = "Kv408 calibration";
constexpr std::string_view last_line = "end";

/// A line of the file that says which instrument the record is of: its first word, and what
/// follows.
struct IdentityLine {
    std::string_view key;
    std::string InstrumentIdentity::*member = nullptr;
};

constexpr std::array<IdentityLine, 3> identity_lines = {
    {{"serial", &InstrumentIdentity::serial},
     {"hardware", &InstrumentIdentity::hardware},
     {"firmware", &InstrumentIdentity::firmware}}};

/// Cuts the first of the words in `line` off it; empty when there is none.
std::string_view take_word(std::string_view& line) {
    const auto start = line.find_first_not_of(blanks);
    line.remove_prefix(start == std::string_view::npos ? line.size() : start);
    const auto end = std::min(line.find_first_of(blanks), line.size());
    const std::string_view word = line.substr(0, end);
    line.remove_prefix(end);
    return word;
}

/// Cuts the first line off `bytes`; without the blanks at its end.
std::string_view take_trimmed_line(std::string_view& bytes) {
    const auto end = std::min(bytes.find('\n'), bytes.size());
    std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    line = line.substr(0, line.find_last_not_of(blanks) + 1);
    return line;
}

/// Takes what `line` says of the instrument into `instrument`; false when it says nothing of it.
bool take_identity(std::string_view line, InstrumentIdentity& instrument) {
    const std::string_view key = take_word(line);
    const auto* const found =
        std::find_if(identity_lines.begin(), identity_lines.end(),
                     [key](const IdentityLine& one) { return one.key == key; });
    if (found == identity_lines.end()) {
        return false;
    }
    const auto start = std::min(line.find_first_not_of(blanks), line.size());
    instrument.*(found->member) = line.substr(start);
    return true;
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

std::string first_few(std::span<const std::string> items) {
    constexpr std::size_t most = 2;
    std::string text;
    for (const std::string& item : items.first(std::min(items.size(), most))) {
        text += text.empty() ? "" : "; ";
        text += item;
    }
    if (items.size() > most) {
        text += " and ";
        text += std::to_string(items.size() - most);
        text += " more";
    }
    return text;
}

std::string differences(const CalibrationRecord& written, const CalibrationRecord& held) {
    std::vector<std::string> found;
    for (std::size_t index = 0; index < written.size(); ++index) {
        if (held.at(index) != written.at(index)) {
            std::string text(names.at(index));
            text += " is ";
            text += std::to_string(held.at(index));
            text += " and not ";
            text += std::to_string(written.at(index));
            found.push_back(std::move(text));
        }
    }
    return first_few(found);
}

bool may_be_the_same(const InstrumentIdentity& one, const InstrumentIdentity& other) {
    const auto agree = [](const std::string& left, const std::string& right) {
        return left.empty() || right.empty() || left == right;
    };
    return agree(one.serial, other.serial) && agree(one.hardware, other.hardware);
}

std::string record_file(const KeptRecord& kept) {
    std::string text(first_line);
    text += '\n';
    for (const auto& [key, member] : identity_lines) {
        text += key;
        text += ' ';
        text += kept.instrument.*member;
        text += '\n';
    }
    for (std::size_t index = 0; index < kept.values.size(); ++index) {
        text += std::to_string(index);
        text += ' ';
        text += std::to_string(kept.values.at(index));
        text += ' ';
        text += names.at(index);
        text += '\n';
    }
    text += last_line;
    text += '\n';
    return text;
}

std::optional<KeptRecord> record_of_file(std::string_view bytes) {
    if (take_trimmed_line(bytes) != first_line) {
        return std::nullopt;
    }
    KeptRecord kept;
    std::array<bool, record_size> found = {};
    bool whole = false;
    while (!bytes.empty() && !whole) {
        std::string_view line = take_trimmed_line(bytes);
        whole = line == last_line;
        if (whole || take_identity(line, kept.instrument)) {
            continue;
        }
        const auto index = int16_in(take_word(line));
        const auto value = int16_in(take_word(line));
        const auto place = static_cast<std::size_t>(index.value_or(-1));
        if (!value || place >= found.size() || found.at(place)) {
            return std::nullopt;
        }
        found.at(place) = true;
        kept.values.at(place) = *value;
    }
    const bool complete = std::all_of(found.begin(), found.end(), [](bool one) { return one; });
    return whole && complete ? std::optional(kept) : std::nullopt;
}

} // namespace kv408
