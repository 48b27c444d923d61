#pragma once

#include <cstdint>

#include "state/channel_state.h"
#include "state/plot_geometry.h"

namespace kv408 {

/// The row of `code` on the channel's trace, neither rounded nor held within the plot: higher codes
/// lie higher, the channel's offset code lies on the centre row.
[[nodiscard]] constexpr double trace_row(const ChannelState& channel, double code) {
    const double difference = static_cast<double>(channel.offsetdac) - code;
    return difference * channel.scale * channel.vtfactor + double{plot::centre_y};
}

/// By how many columns the channel's trace lies right of its samples' indices.
[[nodiscard]] constexpr std::int64_t trace_shift(const ChannelState& channel) {
    return std::int64_t{channel.shown_delaypts} - channel.delaypts;
}

} // namespace kv408
