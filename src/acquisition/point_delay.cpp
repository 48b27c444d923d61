#include "acquisition/point_delay.h"

#include <algorithm>
#include <cstdint>

#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr double start_delay_ps = 2500.0;       ///< delay of the point before the first one
constexpr std::int32_t undivided_limit = 10500; ///< longest delay sent undivided, picoseconds
constexpr std::int32_t second_value_from = 482; ///< least divider that needs the second value
constexpr std::int32_t fine_zero = 240;         ///< fine byte of divider 1

std::int32_t odd_divider(std::int32_t delay) {
    std::int32_t divider =
        round_to_int32(static_cast<double>(delay + undivided_limit) / undivided_limit);
    if (divider % 2 == 0) {
        ++divider;
    }
    return std::max(divider, 3);
}

/// `value` modulo 256, never negative.
std::uint8_t low_byte(std::int32_t value) {
    return static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) & 0xFFU);
}

} // namespace

PointDelay point_delay(int index, double tbresolution) {
    const std::int32_t delay = round_to_int32(index * tbresolution + start_delay_ps);
    if (delay <= undivided_limit) {
        return {.coarse = delay, .second = 1, .fine = fine_zero};
    }
    const std::int32_t divider = odd_divider(delay);
    PointDelay result;
    result.coarse = round_to_int32(static_cast<double>(delay) / divider);
    // The divider is odd, so half of one less is whole.
    result.fine = low_byte(fine_zero - (divider - 1) / 2);
    result.second =
        divider >= second_value_from ? round_to_int32(divider / 16.0 - 16.0) : std::int32_t{1};
    return result;
}

} // namespace kv408
