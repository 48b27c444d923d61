#pragma once

#include <string_view>

namespace kv408 {

/// What the instrument's USB serial number begins with, in these letters.
inline constexpr std::string_view instrument_prefix = "lm4rxa";

/// Whether `serial` is the serial number of an instrument.
[[nodiscard]] constexpr bool is_instrument(std::string_view serial) {
    return serial.starts_with(instrument_prefix);
}

} // namespace kv408
