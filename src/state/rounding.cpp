#include "state/rounding.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

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

/// Cuts the number at the start of `text` off it; nothing, with `text` less its leading blanks,
/// when there is none.
std::optional<double> take_number(std::string_view& text) {
    const auto start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) {
        return std::nullopt;
    }
    text.remove_prefix(start);
    bool negative = false;
    if (text.front() == '+' || text.front() == '-') {
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
    return take_number(text).value_or(0.0);
}

std::optional<double> whole_number_text(std::string_view text) {
    const auto number = take_number(text);
    return text.find_first_not_of(" \t") == std::string_view::npos ? number : std::nullopt;
}

} // namespace kv408
