#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

namespace kv408 {

/// Appends `value`, an unsigned whole number, to `bytes`, the lowest byte first.
template <typename Unsigned>
void put_little_endian(std::string& bytes, Unsigned value) {
    constexpr unsigned bits_per_byte = 8;
    for (std::size_t byte = 0; byte < sizeof value; ++byte) {
        bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> (bits_per_byte * byte));
    }
}

/// Appends `value` as the 8 or 4 bytes of a floating-point number, the lowest byte first.
inline void put_float64(std::string& bytes, double value) {
    put_little_endian(bytes, std::bit_cast<std::uint64_t>(value));
}
inline void put_float32(std::string& bytes, float value) {
    put_little_endian(bytes, std::bit_cast<std::uint32_t>(value));
}

} // namespace kv408
