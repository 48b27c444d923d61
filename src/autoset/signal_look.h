#pragma once

#include <optional>

#include "state/sweep.h"

namespace kv408 {

/// What a look at one channel's part of a sweep tells of its signal. Times are picoseconds after
/// the trigger, voltages millivolts at the input, never upside down.
struct SignalLook {
    double low = 0.0;                  ///< the signal's lowest value, noise taken off
    double high = 0.0;                 ///< the highest
    bool alive = false;                ///< more than noise
    bool clipped = false;              ///< cut off at an end of the instrument's scale
    std::optional<double> period = {}; ///< of what repeats, where the sweep shows that
    /// Of a signal that does not repeat with the trigger: when the first edges come after it.
    std::optional<double> edge = {};

    [[nodiscard]] double height() const { return high - low; }
    [[nodiscard]] double middle() const { return (low + high) / 2.0; }
};

/// Which edge of the channel's own signal started the sweep; nothing where that is not known.
enum class StartedBy { unknown, rising, falling };

/// Looks at `part`, whole or not.
[[nodiscard]] SignalLook look_at(const ChannelSweep& part, StartedBy started);

} // namespace kv408
