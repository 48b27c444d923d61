#pragma once

// The one place for rounding, narrowing and reading numbers out of text. Every conversion that
// the user or the instrument can see goes through one of these.

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace kv408 {

/// The nearest whole number to `value`, halves to the even neighbour (2.5 gives 2, 3.5 gives 4),
/// whatever the floating-point rounding mode of the process. A NaN stays a NaN.
[[nodiscard]] double round_half_even(double value);

/// `value` rounded halves to even and held within the 32-bit signed range; NaN gives 0.
[[nodiscard]] std::int32_t round_to_int32(double value);

/// `value` rounded halves to even and held within the 16-bit signed range; NaN gives 0.
[[nodiscard]] std::int16_t round_to_int16(double value);

/// The number at the start of `text` as a person means it: leading blanks, a sign, digits, a
/// decimal point (always a point, whatever the locale) and an exponent; what follows is ignored.
/// Text without a number in front gives 0; a number too large for a double gives the largest one.
[[nodiscard]] double leading_number(std::string_view text);

/// The number that the whole of `text` is, written as leading_number reads one, with blanks around
/// it; nothing for a text that is more or less than one number.
[[nodiscard]] std::optional<double> entire_number(std::string_view text);

/// A unit that may be typed behind a number.
struct Unit {
    std::string_view name; ///< lower case
    double worth;          ///< how many of the unit that is meant without one
};

/// The units of what is meant in picoseconds and in microseconds.
inline constexpr std::array<Unit, 3> picosecond_units = {{{"ps", 1.0}, {"ns", 1e3}, {"us", 1e6}}};
inline constexpr std::array<Unit, 2> microsecond_units = {{{"us", 1.0}, {"ms", 1e3}}};

/// The number that the whole of `text` is, written as leading_number reads one, with one of `units`
/// behind it or none and with blanks around both; small and large letters count alike, and the
/// letter mu as u. In the unit that is meant without one. An empty text is 0; nothing for a text
/// that is more or something else.
[[nodiscard]] std::optional<double> quantity_in(std::string_view text, std::span<const Unit> units);

/// The whole number that the whole of `text` is: nothing for one with a part behind the point, for
/// a text that is no number, and outside the 32-bit signed range.
[[nodiscard]] std::optional<std::int32_t> whole_number_in(std::string_view text);

/// The number that the whole of `text` is, rounded halves to even; nothing for a text that is no
/// number and for one outside the 16-bit or 32-bit signed range.
[[nodiscard]] std::optional<std::int16_t> int16_in(std::string_view text);
[[nodiscard]] std::optional<std::int32_t> int32_in(std::string_view text);

} // namespace kv408
