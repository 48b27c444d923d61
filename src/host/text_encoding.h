#pragma once

#include <string>
#include <string_view>

namespace kv408 {

/// The UTF-8 text of `bytes` in the system's 8-bit code page. On Windows that is the ANSI code
/// page; elsewhere it is UTF-8 itself, and `bytes` come back as they are.
[[nodiscard]] std::string from_code_page(std::string bytes);

/// The UTF-8 `text` in the system's 8-bit code page; what that cannot express becomes the code
/// page's own substitute.
[[nodiscard]] std::string to_code_page(std::string text);

#ifdef _WIN32
/// The UTF-8 text of the system's wide characters `wide`.
[[nodiscard]] std::string from_wide(std::wstring_view wide);

/// The UTF-8 `text` in the system's wide characters.
[[nodiscard]] std::wstring to_wide(std::string_view text);
#endif

} // namespace kv408
