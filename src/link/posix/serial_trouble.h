#pragma once

#include <string>

namespace kv408 {

/// Why the serial port `port` (its device node) gave the system error `error`, and what cures it,
/// in plain words for a message box.
[[nodiscard]] std::string serial_trouble(const std::string& port, int error);

/// What to say of the device node `node` that may not be used, with a line that lets everybody use
/// it for now.
[[nodiscard]] std::string permission_for_now(const std::string& node);

} // namespace kv408
