#pragma once

#include <string>

namespace kv408 {

/// `value` in engineering notation: `digits` (1..9) significant digits and one of the prefixes p,
/// n, u, m, none, k, M, G; the caller appends the unit. The number is cut, not rounded; sign,
/// decimal point and leading zeros do not count as digits; the separator is always a point, and a
/// point at the end is dropped. Below 1e-12 in magnitude it is 0 without a prefix, written with
/// `digits` digits ("0.00"). All digits before the point stay, also above 1000 G.
///
/// What is cut is the number's decimal form with `digits` + 3 digits after the point, counted at
/// the prefix; it has at most 15 significant digits, the most that every decimal number survives in
/// a double. So 0.3, which a double holds as 0.29999999999999998..., reads 300m and not 299m, and
/// so does a result that is some roundings off; 1.99999, given exactly, reads 1.999. The power of
/// ten of the prefix is taken out of the decimal form, without any rounding by a multiplication.
[[nodiscard]] std::string engformat(double value, int digits);

/// `value` as a number is printed by default: in decimal, preceded by a space when it is not
/// negative, as in " 200" and "-7".
[[nodiscard]] std::string printed_number(double value);

} // namespace kv408
