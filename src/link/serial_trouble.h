#pragma once

#include <string>

namespace kv408 {

/// Why the serial port `port` (its device node) gave the system error `error`, and what cures it,
/// in plain words for a message box.
[[nodiscard]] std::string serial_trouble(const std::string& port, int error);

} // namespace kv408
