#pragma once

#include <cstdint>

namespace kv408::simulator {

/// The repeating pattern of pseudo-random bits that a shift register gives, of 2^order - 1 bits,
/// from any bit on. The registers are those that bit error testers share: 2^7 - 1 with taps 7 and
/// 6, 2^15 - 1 with 15 and 14, 2^31 - 1 with 31 and 28; all of a register's bits are 1 before bit
/// 0.
class RandomBits {
public:
    /// Begins with bit `first`, which may be negative. `order` is 7, 15 or 31, else as 7.
    RandomBits(int order, std::int64_t first);

    /// The next bit.
    [[nodiscard]] bool take();

private:
    std::uint32_t low_; ///< what x^order is, as a polynomial: a bit for each power of x
    int order_;
    std::uint32_t power_ = 1; ///< x to the number of the next bit, as such a polynomial
};

/// Whether the pattern of `order` rises, or else falls, where bit `bit` begins.
[[nodiscard]] bool data_turn(int order, std::int64_t bit, bool rising);

/// The longest distance from one such edge to the next, bits.
[[nodiscard]] int longest_gap_of_data(int order, bool rising);

} // namespace kv408::simulator
