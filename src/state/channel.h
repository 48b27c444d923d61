#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace kv408 {

/// A channel, which is also the index of everything that exists once per channel, and of the
/// trigger source that is its own. No number converts to one by itself: 1 and 2 stand only in
/// names, in texts and on the wire.
enum Channel : std::size_t { ch1 = 0, ch2 = 1 };

/// Both channels in their order.
inline constexpr std::array<Channel, 2> both_channels = {ch1, ch2};

/// The number of `channel` in names, in texts and on the wire, 1 or 2.
[[nodiscard]] constexpr int number_of(Channel channel) {
    return channel == ch1 ? 1 : 2;
}

/// What `channel` is called in texts: "CH1", "CH2".
[[nodiscard]] inline std::string channel_label(Channel channel) {
    return "CH" + std::to_string(number_of(channel));
}

/// The channel that `channel` is not.
[[nodiscard]] constexpr Channel other(Channel channel) {
    return channel == ch1 ? ch2 : ch1;
}

} // namespace kv408
