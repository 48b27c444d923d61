#pragma once

#include <cstdint>
#include <string>

namespace kv408 {

/// `value` in engineering notation: `digits` (1..9) significant digits and one of the prefixes p,
/// n, u, m, none, k, M, G; the caller appends the unit. The number is cut, not rounded; sign,
/// decimal point and leading zeros do not count as digits; the separator is always a point, and a
/// point at the end is dropped. Below 1e-12 in magnitude it is 0 without a prefix, written with
/// `digits` digits ("0.00"). All digits before the point stay, also above 1000 G.
///
/// The number is cut in its decimal form of 15 significant digits, the most that every decimal
/// number survives in a double: 0.3, which a double holds as 0.29999999999999998..., reads 300m and
/// not 299m, and so does a result that is one rounding off.
[[nodiscard]] std::string engformat(double value, int digits);

/// `value` as a number is printed by default: in decimal, preceded by a space when it is not
/// negative, as in " 200" and "-7".
[[nodiscard]] std::string printed_number(double value);

/// `value` as a whole number is printed into a file by default: all its digits, preceded by a space
/// when it is not negative, and followed by one, as in " 200 " and "-7 ".
[[nodiscard]] std::string printed_field(std::int32_t value);

} // namespace kv408
