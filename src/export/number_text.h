#pragma once

#include <string>

namespace kv408 {

/// `value` with at most twelve significant digits as every program reads it: a decimal point
/// whatever the locale, and where an exponent is shorter one with a lower-case e: "0.25",
/// "3.13e-10".
[[nodiscard]] std::string number_text(double value);

} // namespace kv408
