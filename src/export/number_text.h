#pragma once

#include <string>

namespace kv408 {

/// `value` with at most twelve significant digits as every program reads it: a decimal point
/// whatever the locale, and where an exponent is shorter one with a lower-case e: "0.25",
/// "3.13e-10".
[[nodiscard]] std::string number_text(double value);

/// `value` for people, rounded to `digits` significant digits (1..12), below 1 to as many digits
/// behind the point, without a prefix or an exponent: "48.500", "0.50000".
[[nodiscard]] std::string plain_text(double value, int digits);

} // namespace kv408
