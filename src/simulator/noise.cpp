#include "simulator/noise.h"

namespace kv408::simulator {

std::uint64_t Noise::bits() {
    // The splitmix64 sequence.
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
}

double Noise::uniform() {
    return static_cast<double>(bits() >> 11U) / 9007199254740992.0;
}

double Noise::gaussian() {
    // Twelve uniform numbers of 0..65535 have the sum's variance 65536 squared (less one) and
    // the mean 12 * 32767.5.
    std::int32_t sum = 0;
    for (int draw = 0; draw < 3; ++draw) {
        const std::uint64_t four = bits();
        for (unsigned shift = 0; shift < 64; shift += 16) {
            sum += static_cast<std::int32_t>((four >> shift) & 0xFFFFU);
        }
    }
    return static_cast<double>(sum - 393210) / 65536.0;
}

} // namespace kv408::simulator
