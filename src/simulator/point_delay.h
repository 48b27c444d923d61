#pragma once

#include "simulator/frame_reader.h"

#include <cstddef>
#include <cstdint>

namespace kv408::simulator {

/// What a fetch-one-sample command asks for.
struct PointRequest {
    std::size_t channel = 0;   ///< 0 for CH1
    std::int64_t delay_ps = 0; ///< nominal delay after the trigger: coarse delay times divider
};

/// Decodes the five arguments of command 26: coarse delay (bit 15 of the first word selects CH2),
/// coarse divider word and fine byte, which together give the odd divider of the delay.
[[nodiscard]] PointRequest decode_point(const Command& command);

} // namespace kv408::simulator
