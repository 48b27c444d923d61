#include "state/engineering_format.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace kv408 {
namespace {

/// The most significant digits that every decimal number survives in a double.
constexpr int most_digits = 15;

/// Digits after the point that are written beyond those that are shown.
constexpr int spare_digits = 3;

/// A number's decimal form: its digits with the point after the first, and a power of ten.
struct Decimal {
    bool negative = false;
    std::string digits;
    int exponent = 0;
};

/// `value` with `significant` digits, the nearest number that has so many.
Decimal decimal(double value, int significant) {
    std::array<char, 40> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                   std::chars_format::scientific, significant - 1);
    assert(end.ec == std::errc());
    const std::string_view written(text.data(), static_cast<std::size_t>(end.ptr - text.data()));
    const auto mark = written.find('e');
    Decimal result;
    result.negative = value < 0.0;
    result.digits = written.substr(0, 1);
    result.digits += written.substr(2, mark - 2);
    // from_chars does not take the plus sign that to_chars writes.
    const auto exponent = written.substr(mark + (written[mark + 1] == '+' ? 2 : 1));
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), result.exponent);
    return result;
}

/// The prefix of a number of that power of ten, and the power that it stands for.
struct Prefix {
    int power;
    const char* text;
};

Prefix prefix_of(int exponent) {
    constexpr std::array<Prefix, 8> prefixes = {
        {{9, "G"}, {6, "M"}, {3, "k"}, {0, ""}, {-3, "m"}, {-6, "u"}, {-9, "n"}, {-12, "p"}}};
    for (const Prefix& prefix : prefixes) {
        if (exponent >= prefix.power) {
            return prefix;
        }
    }
    return prefixes.back();
}

} // namespace

std::string engformat(double value, int digits) {
    assert(std::isfinite(value));
    assert(digits >= 1 && digits <= 9);
    const auto wanted = static_cast<std::size_t>(digits);
    if (std::fabs(value) < 1e-12) {
        std::string zero = wanted == 1 ? "0" : "0.";
        return zero.append(wanted - 1, '0');
    }
    const int exponent = decimal(value, most_digits).exponent;
    const Prefix prefix = prefix_of(exponent);
    const int written = exponent - prefix.power + 1 + digits + spare_digits;
    Decimal number = decimal(value, std::min(written, most_digits));
    const auto before_point = static_cast<std::size_t>(number.exponent - prefix.power + 1);
    number.digits.resize(std::max(number.digits.size(), before_point), '0');
    std::string text = number.negative ? "-" : "";
    text += number.digits.substr(0, before_point);
    if (wanted > before_point) {
        text += '.';
        text += number.digits.substr(before_point, wanted - before_point);
    }
    return text + prefix.text;
}

std::string printed_number(double value) {
    std::array<char, 40> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
    assert(end.ec == std::errc());
    std::string printed = value < 0.0 ? "" : " ";
    return printed.append(text.data(), end.ptr);
}

} // namespace kv408
