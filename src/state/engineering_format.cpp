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

/// A number's decimal form: its digits with the point after the first, and a power of ten. Zeros
/// follow the digits.
struct Decimal {
    std::array<char, most_digits> digits = {};
    int exponent = 0;

    [[nodiscard]] char digit(int index) const {
        return index < most_digits ? digits[static_cast<std::size_t>(index)] : '0';
    }
};

/// The magnitude of `value` with `significant` digits, the nearest number that has so many.
Decimal decimal(double value, int significant) {
    std::array<char, 40> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), std::fabs(value),
                                   std::chars_format::scientific, significant - 1);
    assert(end.ec == std::errc());
    const std::string_view written(text.data(), static_cast<std::size_t>(end.ptr - text.data()));
    const auto mark = written.find('e');
    Decimal result;
    result.digits.fill('0');
    result.digits.front() = written.front();
    std::copy(written.begin() + 2, written.begin() + static_cast<std::ptrdiff_t>(mark),
              result.digits.begin() + 1);
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

/// The power of ten of `magnitude`, 1e-12 or above; one too low at most when a binary fraction
/// cannot hold the power exactly.
int exponent_of(double magnitude) {
    constexpr int lowest_power = -12;
    constexpr std::array<double, 25> powers = {
        1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1, 1e0,
        1e1,   1e2,   1e3,   1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11, 1e12};
    if (magnitude >= powers.back()) {
        return decimal(magnitude, most_digits).exponent;
    }
    const auto* const above = std::upper_bound(powers.begin(), powers.end(), magnitude);
    return static_cast<int>(above - powers.begin()) - 1 + lowest_power;
}

/// Significant digits of a number that is written with `digits` and the spare ones after the point.
int written_digits(int exponent, const Prefix& prefix, int digits) {
    return std::min(exponent - prefix.power + 1 + digits + spare_digits, most_digits);
}

} // namespace

std::string engformat(double value, int digits) {
    assert(std::isfinite(value));
    assert(digits >= 1 && digits <= 9);
    if (std::fabs(value) < 1e-12) {
        std::string zero = digits == 1 ? "0" : "0.";
        return zero.append(static_cast<std::size_t>(digits) - 1, '0');
    }
    int exponent = exponent_of(std::fabs(value));
    Prefix prefix = prefix_of(exponent);
    Decimal number = decimal(value, written_digits(exponent, prefix, digits));
    if (number.exponent != exponent) {
        // Just below a power of ten: it may be the power as a binary fraction holds it.
        exponent = decimal(value, most_digits).exponent;
        prefix = prefix_of(exponent);
        number = decimal(value, written_digits(exponent, prefix, digits));
    }
    const int before_point = number.exponent - prefix.power + 1;
    std::string text;
    if (value < 0.0) {
        text += '-';
    }
    for (int index = 0; index < std::max(before_point, digits); ++index) {
        if (index == before_point) {
            text += '.';
        }
        text += number.digit(index);
    }
    text += prefix.text;
    return text;
}

std::string printed_number(double value) {
    std::array<char, 40> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
    assert(end.ec == std::errc());
    std::string printed = value < 0.0 ? "" : " ";
    return printed.append(text.data(), end.ptr);
}

} // namespace kv408
