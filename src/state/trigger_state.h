#pragma once

#include <array>
#include <cstdint>

#include "state/channel.h"

namespace kv408 {

/// Level codes that one step of the adjust wheel changes.
inline constexpr std::int32_t codes_per_wheel_step = 4;

/// A trigger as the instrument acknowledged it.
struct TriggerSetting {
    Channel source = ch1;        ///< `ch1` for TRIG1, `ch2` for TRIG2
    bool positive = true;        ///< edge
    double level_mv = 0.0;       ///< millivolts at the source's input
    std::int16_t hysteresis = 0; ///< 0..255
    std::int32_t timeout = 0;    ///< microseconds; 0 before the first upload

    friend bool operator==(const TriggerSetting&, const TriggerSetting&) = default;
};

/// What the trigger controls have set. Arrays hold TRIG1 at index 0 and TRIG2 at index 1.
struct TriggerState {
    std::int16_t trigpos =
        2048; ///< level code of the current source; 2048 is 0 mV, one code per millivolt
    std::array<std::int16_t, 2> saved_trigpos = {2048,
                                                 2048}; ///< `trigpos1`, `trigpos2`: level codes
    std::int32_t trigwheel = 512; ///< `trigpos` / 4, the adjust wheel's value for the level
    std::array<std::int16_t, 2> hyst = {10,
                                        10}; ///< `hyst1`, `hyst2`: hysteresis slider values, 0..255
    std::array<std::int32_t, 2> trigdelay =
        {};                        ///< `trig1delay`, `trig2delay`: path delays, picoseconds
    std::int32_t trigsrcdelay = 0; ///< path delay of the selected source, picoseconds
};

} // namespace kv408
