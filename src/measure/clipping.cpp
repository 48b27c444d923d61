#include "measure/clipping.h"

#include <algorithm>
#include <cstdint>

namespace kv408 {
namespace {

constexpr std::int16_t lowest_code = 0;
constexpr std::int16_t highest_code = 4095;

} // namespace

Clipping clipping_of(const ChannelSweep& part) {
    if (part.codes.empty()) {
        return {};
    }
    const auto [least, greatest] = std::minmax_element(part.codes.begin(), part.codes.end());
    return {.lowest = *least <= lowest_code, .highest = *greatest >= highest_code};
}

Clipping ClippingWatch::look(Channel channel, const std::shared_ptr<const ChannelSweep>& part) {
    Known& known = known_.at(channel);
    if (known.part != part) {
        known = {part, clipping_of(*part)};
    }
    return known.clipping;
}

} // namespace kv408
