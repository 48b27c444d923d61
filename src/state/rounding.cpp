#include "state/rounding.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "state/text.h"

namespace kv408 {
namespace {

/// Rounds and saturates into the range of `Integer`.
template <typename Integer>
Integer saturate(double value) {
    if (std::isnan(value)) {
        return 0;
    }
    const double rounded = round_half_even(value);
    if (rounded <= static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::min();
    }
    if (rounded >= static_cast<double>(std::numeric_limits<Integer>::max())) {
        return std::numeric_limits<Integer>::max();
    }
    return static_cast<Integer>(rounded);
}

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

/// Takes the number at the start of `text` off it; nothing where none stands there, and `text` is
/// then what follows the blanks and the sign.
std::optional<double> read_number(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    bool negative = false;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    // from_chars also knows "inf" and "nan", which no person means as a number here.
    const bool numeric =
        !text.empty() &&
        (is_digit(text.front()) || (text.front() == '.' && text.size() > 1 && is_digit(text[1])));
    if (!numeric) {
        return std::nullopt;
    }
    double value = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const auto length = static_cast<std::size_t>(result.ptr - text.data());
    if (result.ec == std::errc::result_out_of_range) {
        // Too small and too large share one error code: an exponent with a minus sign is too small.
        const std::string_view read = text.substr(0, length);
        value =
            read.find("e-") != std::string_view::npos || read.find("E-") != std::string_view::npos
                ? 0.0
                : std::numeric_limits<double>::max();
    }
    text.remove_prefix(length);
    return negative ? -value : value;
}

std::string_view without_blanks_and_tabs(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(" \t") + 1));
    return text;
}

/// `text` as the names of units are written: small letters, and a plain u for a mu in UTF-8.
std::string unit_name(std::string_view text) {
    std::string name;
    for (const std::string_view mu : {"\xC2\xB5", "\xCE\xBC"}) {
        if (text.starts_with(mu)) {
            name.push_back('u');
            text.remove_prefix(mu.size());
        }
    }
    for (const char letter : text) {
        const bool large = letter >= 'A' && letter <= 'Z';
        name.push_back(large ? static_cast<char>(letter - 'A' + 'a') : letter);
    }
    return name;
}

/// The number that the whole of `text` is, rounded, when an `Integer` holds it.
template <typename Integer>
std::optional<Integer> number_within(std::string_view text) {
    const auto number = entire_number(text);
    if (!number) {
        return std::nullopt;
    }
    const double rounded = round_half_even(*number);
    if (rounded < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        rounded > static_cast<double>(std::numeric_limits<Integer>::max())) {
        return std::nullopt;
    }
    return static_cast<Integer>(rounded);
}

} // namespace

double round_half_even(double value) {
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction < 0.5) {
        return below;
    }
    if (fraction > 0.5) {
        return below + 1.0;
    }
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

std::int32_t round_to_int32(double value) {
    return saturate<std::int32_t>(value);
}

std::int16_t round_to_int16(double value) {
    return saturate<std::int16_t>(value);
}

double leading_number(std::string_view text) {
    return read_number(text).value_or(0.0);
}

std::optional<double> entire_number(std::string_view text) {
    const auto number = read_number(text);
    return is_blank(text) ? number : std::nullopt;
}

std::optional<double> quantity_in(std::string_view text, std::span<const Unit> units) {
    text = without_blanks_and_tabs(text);
    if (text.empty()) {
        return 0.0;
    }
    const auto number = read_number(text);
    const std::string name = unit_name(without_blanks_and_tabs(text));
    if (!number || name.empty()) {
        return name.empty() ? number : std::nullopt;
    }
    const auto unit = std::find_if(units.begin(), units.end(),
                                   [&](const Unit& known) { return known.name == name; });
    return unit == units.end() ? std::nullopt : std::optional(*number * unit->worth);
}

std::optional<std::int16_t> int16_in(std::string_view text) {
    return number_within<std::int16_t>(text);
}

std::optional<std::int32_t> whole_number_in(std::string_view text) {
    const auto number = entire_number(text);
    return number && *number == std::trunc(*number) ? int32_in(text) : std::nullopt;
}

std::optional<std::int32_t> int32_in(std::string_view text) {
    return number_within<std::int32_t>(text);
}

} // namespace kv408
