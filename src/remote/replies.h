#pragma once

// Values as a reply writes them, by IEEE 488.2, chapter 8.7: the same whatever the locale.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kv408 {

/// A whole number: "-113".
[[nodiscard]] std::string whole_reply(std::int64_t value);

/// A real number with seven digits: "-1.234567E-03"; "9.91E+37" for a NaN, which stands for what
/// cannot be measured, "9.9E+37" and "-9.9E+37" for infinities.
[[nodiscard]] std::string real_reply(double value);

/// "1" or "0".
[[nodiscard]] std::string boolean_reply(bool value);

/// A text in double quotes, those in it doubled.
[[nodiscard]] std::string string_reply(std::string_view text);

/// Adds `item` to `list`, behind a comma unless it is the first.
void add_item(std::string& list, std::string_view item);

/// Adds the bytes of `value`, an unsigned number, to `bytes`, the first the most significant unless
/// `least_first`.
template <typename Unsigned>
void add_bytes(std::string& bytes, Unsigned value, bool least_first) {
    constexpr unsigned byte_bits = 8;
    for (std::size_t i = 0; i < sizeof value; ++i) {
        const std::size_t place = least_first ? i : sizeof value - 1 - i;
        bytes += static_cast<char>(static_cast<unsigned char>(value >> byte_bits * place));
    }
}

/// A block of definite length: "#15hello".
[[nodiscard]] std::string block_reply(std::string_view bytes);

/// What stands in front of a block's `size` bytes.
[[nodiscard]] std::string block_head(std::size_t size);

} // namespace kv408
