#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "panel/controls.h"
#include "state/channel_state.h"

namespace kv408 {

/// The longest horizontal delay, picoseconds.
inline constexpr std::int32_t longest_delay = 65535;

/// The delay that the number at the start of `text` says, whatever follows it, held within
/// 0..`longest_delay` picoseconds.
[[nodiscard]] std::int32_t leading_delay(std::string_view text);

/// The delay that `text` says in picoseconds or with the unit ps, ns or us, held within
/// 0..`longest_delay` picoseconds; nothing where it says none.
[[nodiscard]] std::optional<std::int32_t> typed_delay(std::string_view text);

/// The delay of `channel`, 0..`longest_delay` picoseconds: that in its box `psofset`, or the one
/// taken last while the box holds nothing that can be taken.
[[nodiscard]] std::int32_t delay_of(const TextBox& psofset, const ChannelState& channel);

/// The delay that a set-up sends for `channel`, picoseconds. What is still being typed into
/// `psofset` is not held within any range.
[[nodiscard]] std::int32_t delay_to_send(const TextBox& psofset, const ChannelState& channel);

/// What stands in `psofset` as read-out and settings file bear it, in picoseconds without a unit:
/// a plain number as it was typed.
[[nodiscard]] std::string delay_text(const TextBox& psofset, const ChannelState& channel);

} // namespace kv408
