#include "simulator/random_data.h"

#include <array>
#include <bit>

namespace kv408::simulator {
namespace {

/// A shift register whose fresh bit is that of `order` steps ago plus that of `tap` steps ago.
struct Register {
    int order;
    int tap;
    int longest_gap_of_rises; ///< bits, by going once through the pattern
    int longest_gap_of_falls;
};

constexpr std::array<Register, 3> registers = {{{7, 6, 13, 8}, {15, 14, 29, 16}, {31, 28, 59, 34}}};

const Register& register_of(int order) {
    for (const Register& one : registers) {
        if (one.order == order) {
            return one;
        }
    }
    return registers.front();
}

std::uint32_t times_x(std::uint32_t polynomial, int order, std::uint32_t low) {
    const std::uint32_t highest = 1U << (order - 1);
    const bool over = (polynomial & highest) != 0;
    return ((polynomial & (highest - 1)) << 1U) ^ (over ? low : 0U);
}

std::uint32_t product(std::uint32_t left, std::uint32_t right, int order, std::uint32_t low) {
    std::uint32_t result = 0;
    for (int power = order - 1; power >= 0; --power) {
        result = times_x(result, order, low);
        if (((right >> static_cast<unsigned>(power)) & 1U) != 0) {
            result ^= left;
        }
    }
    return result;
}

} // namespace

// Bit n + order is the sum of bits n and n + order - tap, as x^order is that of 1 and x^(order -
// tap). So the bit that comes n after those in the register is the sum of those of them that x^n
// has.
RandomBits::RandomBits(int order, std::int64_t first)
    : low_(1U | (1U << static_cast<unsigned>(register_of(order).order - register_of(order).tap))),
      order_(register_of(order).order) {
    const std::int64_t length = (std::int64_t{1} << order_) - 1;
    std::int64_t exponent = (first % length + length + order_) % length;
    for (std::uint32_t base = 2; exponent > 0; exponent >>= 1) {
        if ((exponent & 1) != 0) {
            power_ = product(power_, base, order_, low_);
        }
        base = product(base, base, order_, low_);
    }
}

bool RandomBits::take() {
    const bool bit = std::popcount(power_) % 2 != 0;
    power_ = times_x(power_, order_, low_);
    return bit;
}

bool data_turn(int order, std::int64_t bit, bool rising) {
    RandomBits bits(order, bit - 1);
    const bool before = bits.take();
    return bits.take() == rising && before != rising;
}

int longest_gap_of_data(int order, bool rising) {
    const Register& one = register_of(order);
    return rising ? one.longest_gap_of_rises : one.longest_gap_of_falls;
}

} // namespace kv408::simulator
