#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kv408::simulator {

/// What the set-trigger commands have set.
struct TriggerSettings {
    std::size_t input = 0;            ///< 0 for TRIG1, 1 for TRIG2
    bool rising = true;               ///< edge "Positive"
    std::int32_t level_mv = 0;        ///< level code less 2048, millivolts at the trigger circuit
    std::int32_t hysteresis_mv = 0;   ///< 0..255, millivolts
    std::int32_t time_out_us = 10000; ///< how long a sample waits for its trigger, microseconds
};

/// The settings that commands have left in the instrument; the start values are those after
/// power-up.
struct Settings {
    TriggerSettings trigger = {};
    /// Gain range of each channel, `low_range` or `high_range` of the bench.
    std::array<std::size_t, 2> range = {1, 1};
    std::array<std::int32_t, 2> offset_ps = {0, 0}; ///< delay of point 0 of each channel
    std::int32_t resolution_ps = 1;                 ///< delay from point to point
};

} // namespace kv408::simulator
