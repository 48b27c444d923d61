#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "panel/front_panel.h"
#include "state/channel_state.h"
#include "state/trigger_state.h"

namespace kv408 {

/// What the user had set of all that Autoset tries things with. What has nothing to do with the
/// signals that are found comes back from here. Arrays hold CH1 or TRIG1 at index 0.
struct UsersSetUp {
    std::string tab;                             ///< key of what the wheel turned
    std::int32_t timeout = 0;                    ///< of the trigger, microseconds
    std::array<std::int16_t, 2> level = {};      ///< of each source, codes
    std::array<std::int16_t, 2> hysteresis = {}; ///< of each source
    std::array<std::string, 2> vdiv;             ///< entries of the V/div lists
    std::array<std::string, 2> delay;            ///< as the boxes' read-outs bear it, picoseconds
};

/// What is set now.
[[nodiscard]] UsersSetUp users_set_up(const FrontPanel& panel, const Channels& channels,
                                      const TriggerState& trigger);

} // namespace kv408
