#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kv408 {

/// `text`, which strangers may have made, as it is shown: what would steer the screen instead of
/// being read (control characters, characters that are invisible or change the direction of
/// writing, bytes that are no UTF-8) becomes "\x1b" and the like, byte for byte.
[[nodiscard]] std::string shown_line(std::string_view text);

/// The name of the file at `path` with its folders, as it is shown, in one line.
[[nodiscard]] std::string shown_path(const std::filesystem::path& path);

/// A text of several lines as it is shown: line feeds and tabs stay.
[[nodiscard]] std::string shown_lines(std::string_view text);

} // namespace kv408
