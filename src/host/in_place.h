#pragma once

#include <filesystem>
#include <string_view>
#include <system_error>

namespace kv408 {

/// Whether this user may write into the plain file at `path` as it is; a link is none. On Windows
/// not while a program that holds it forbids that.
[[nodiscard]] bool may_be_written(const std::filesystem::path& path);

/// Writes `bytes` over the content of the file at `path`; where that fails half way, the `old`
/// content as far as that can be done. A link is not followed.
[[nodiscard]] std::error_code write_in_place(const std::filesystem::path& path,
                                             std::string_view bytes, std::string_view old);

} // namespace kv408
