#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "autoset/fitting.h"
#include "autoset/signal_look.h"
#include "panel/front_panel.h"
#include "state/channel_state.h"

namespace kv408 {

/// What was found in a channel.
struct FoundSignal {
    SignalLook look; ///< of one without a signal where its steady voltage lies
    bool on = false; ///< it has a signal and is shown
};

/// All that Autoset sets in the end.
struct Plan {
    std::array<VerticalFit, 2> vertical; ///< of a channel without a signal nothing
    TimeFit time;
    LevelFit level;
    std::int32_t timeout = 0; ///< of the trigger, microseconds

    /// Whether V/div and time base are those of `other`.
    [[nodiscard]] bool same_scales(const Plan& other) const;
};

/// What a plan is made of.
struct PlanOf {
    const FrontPanel& panel;
    const Channels& channels;
    const std::array<FoundSignal, 2>& found;
    Channel source;             ///< that triggers
    std::int32_t level_wheel;   ///< with this value of the wheel for its level
    std::string_view time_base; ///< where nothing of time was found
    std::int32_t timeout;       ///< microseconds
};

/// The plan that shows what was found.
[[nodiscard]] Plan plan_of(const PlanOf& basis);

/// "TRIG1", "TRIG2".
[[nodiscard]] std::string name_of_source(Channel source);

/// What was found in `channel`, for people, when `source` triggers: "CH1 10.0 MHz 410 mVpp on
/// TRIG1", "CH2 no signal".
[[nodiscard]] std::string words_of(Channel channel, const FoundSignal& found, Channel source);

} // namespace kv408
