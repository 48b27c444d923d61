#include "panel/delay_text.h"

#include <algorithm>

#include "state/rounding.h"

namespace kv408 {
namespace {

std::int32_t legal_delay(double picoseconds) {
    return std::clamp(round_to_int32(picoseconds), 0, longest_delay);
}

} // namespace

std::int32_t leading_delay(std::string_view text) {
    return legal_delay(leading_number(text));
}

std::optional<std::int32_t> typed_delay(std::string_view text) {
    const auto picoseconds = quantity_in(text, picosecond_units);
    return picoseconds ? std::optional(legal_delay(*picoseconds)) : std::nullopt;
}

std::int32_t delay_of(const TextBox& psofset, const ChannelState& channel) {
    return typed_delay(psofset.text()).value_or(channel.delay);
}

std::int32_t delay_to_send(const TextBox& psofset, const ChannelState& channel) {
    if (psofset.faulty()) {
        return channel.delay;
    }
    const std::string& text = psofset.text();
    return round_to_int32(quantity_in(text, picosecond_units).value_or(leading_number(text)));
}

std::string delay_text(const TextBox& psofset, const ChannelState& channel) {
    const bool plain = quantity_in(psofset.text(), {}).has_value();
    return plain ? psofset.text() : std::to_string(delay_of(psofset, channel));
}

} // namespace kv408
