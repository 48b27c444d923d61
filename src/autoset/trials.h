#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "state/channel.h"

namespace kv408 {

/// A source and a level that may trigger.
struct Trial {
    Channel source = ch1;
    std::int32_t wheel = 512; ///< the wheel's value for the level, 0..1024
};

/// What is tried where nothing is known of the signals, in this order: the source and the level of
/// `selected`, which the user has chosen; both sources at 0 V; each source at levels on both sides
/// of that, the selected one first.
[[nodiscard]] std::vector<Trial> trials_of(const Trial& selected);

/// `trial` for people: "TRIG1 at -20 mV".
[[nodiscard]] std::string words_of(const Trial& trial);

} // namespace kv408
