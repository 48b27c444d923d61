#pragma once

// Letters and digits of the language, which are those of ASCII whatever the locale.

#include <algorithm>
#include <string_view>

namespace kv408 {

[[nodiscard]] constexpr bool is_digit(char byte) {
    return byte >= '0' && byte <= '9';
}

[[nodiscard]] constexpr bool is_letter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// `byte`, a small letter as its capital.
[[nodiscard]] constexpr char capital(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

/// True when both are the same but for capitals.
[[nodiscard]] constexpr bool alike(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return capital(a) == capital(b); });
}

} // namespace kv408
