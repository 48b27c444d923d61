#pragma once

// The one place for rounding, narrowing and reading numbers out of text. Every conversion that
// the user or the instrument can see goes through one of these.

#include <cstdint>
#include <optional>
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

/// The number that `text` is, read as `leading_number` reads it; nothing when anything but blanks
/// stands around it, or no number at all.
[[nodiscard]] std::optional<double> whole_number_text(std::string_view text);

} // namespace kv408
