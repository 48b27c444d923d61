#pragma once

#include <string_view>

namespace kv408 {

/// Whether `text` has nothing but spaces.
[[nodiscard]] bool is_blank(std::string_view text);

/// `text` without the spaces around it; it refers to the same characters.
[[nodiscard]] std::string_view without_blanks(std::string_view text);

} // namespace kv408
