#pragma once

#include <string>
#include <system_error>

namespace kv408 {

/// What the system says about `error`, one line of UTF-8.
[[nodiscard]] std::string reason_of(const std::error_code& error);

#ifdef _WIN32
/// Why the calling thread's latest call of the system failed.
[[nodiscard]] std::error_code latest_error();
#endif

} // namespace kv408
