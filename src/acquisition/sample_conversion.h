#pragma once

#include <cstddef>
#include <cstdint>

#include "link/bridge.h"
#include "state/code_conversion.h"
#include "state/samples.h"

namespace kv408 {

/// Highest high byte of a sample word that the receiver takes in a block, and in a single point.
inline constexpr Byte block_high_byte_limit = 32;
inline constexpr Byte point_high_byte_limit = 16;

/// The word by which the instrument says that it has not triggered: in a block reply, and as it
/// reads after the limit of a single point.
inline constexpr std::int16_t block_waiting_word = 6666;
inline constexpr std::int16_t point_waiting_word = 4106;

/// The word of a high and a low byte, the high byte held to at most `limit`.
[[nodiscard]] constexpr std::int16_t sample_word(Byte high, Byte low, Byte limit) {
    return static_cast<std::int16_t>((high > limit ? limit : high) * 256 + low);
}

/// Puts `sample` into point `index`, 0..650, of a channel.
void store_sample(SampleBuffer& samples, std::size_t index, const Sample& sample);

} // namespace kv408
