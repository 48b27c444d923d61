#pragma once

// Paths as the texts that users read, type and keep in files: always UTF-8.

#include <filesystem>
#include <string>
#include <string_view>

namespace kv408 {

/// `path` as the platform writes it, UTF-8.
[[nodiscard]] inline std::string text_of_path(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

/// The path that the UTF-8 text `text` names.
[[nodiscard]] inline std::filesystem::path path_of_text(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

} // namespace kv408
