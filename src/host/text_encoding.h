#pragma once

#include <filesystem>
#include <string>

namespace kv408 {

/// The UTF-8 text of `bytes` in the system's 8-bit code page. On Windows that is the ANSI code
/// page; elsewhere it is UTF-8 itself, and `bytes` come back as they are.
[[nodiscard]] std::string from_code_page(std::string bytes);

/// The UTF-8 `text` in the system's 8-bit code page; what that cannot express becomes the code
/// page's own substitute.
[[nodiscard]] std::string to_code_page(std::string text);

/// The UTF-8 text of `path`, with the platform's separators.
[[nodiscard]] std::string path_text(const std::filesystem::path& path);

} // namespace kv408
