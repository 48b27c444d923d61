#include "simulator/noise.h"

#include <initializer_list>

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
    // Teichroew's method (Knuth, The Art of Computer Programming, volume 2, 3.4.1): the sum of
    // twelve uniform numbers falls off too fast beyond two standard deviations; a polynomial puts
    // that right. The numbers here are 0..65535, with the mean 32767.5.
    std::int32_t sum = 0;
    for (int draw = 0; draw < 3; ++draw) {
        const std::uint64_t four = bits();
        for (unsigned shift = 0; shift < 64; shift += 16) {
            sum += static_cast<std::int32_t>((four >> shift) & 0xFFFFU);
        }
    }
    const double quarter = static_cast<double>(sum - 393210) / (4.0 * 65536.0);
    const double square = quarter * quarter;
    double factor = 0.029899776;
    for (const double coefficient : {0.008355968, 0.076542912, 0.252408784, 3.949846138}) {
        factor = factor * square + coefficient;
    }
    return factor * quarter;
}

} // namespace kv408::simulator
