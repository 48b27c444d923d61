#include "simulator/point_delay.h"

namespace kv408::simulator {
namespace {

constexpr std::uint16_t channel_bit = 0x8000;

/// The divider is 2 * half + 1. The fine byte gives the low eight bits of `half`; from 241 on the
/// coarse word tells to within a few counts where the whole divider lies.
std::int64_t divider(std::uint16_t coarse, Byte fine) {
    const std::int64_t low_half = (240 - std::int64_t{fine}) & 0xFF;
    if (coarse <= 1) {
        return 2 * low_half + 1;
    }
    constexpr std::int64_t turn = 512; // of the divider when `half` runs through 256 values
    const std::int64_t near = 16 * (std::int64_t{coarse} + 16);
    const std::int64_t least = 2 * low_half + 1;
    const std::int64_t turns = (near - least + turn / 2) / turn;
    return least + turn * turns;
}

} // namespace

PointRequest decode_point(const Command& command) {
    const std::uint16_t first = word_argument(command, 0);
    const std::int64_t coarse_delay = first & ~channel_bit;
    return {(first & channel_bit) != 0 ? std::size_t{1} : std::size_t{0},
            coarse_delay * divider(word_argument(command, 2), command.arguments[4])};
}

} // namespace kv408::simulator
