#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "state/channel.h"

namespace kv408 {

/// Gain ranges of the instrument's amplifier, as its commands number them.
inline constexpr std::int16_t high_gain = 1; ///< 10mV/div to 50mV/div, 6 codes per millivolt
inline constexpr std::int16_t low_gain = 2;  ///< 0.1V/div and above, 2 codes per millivolt

/// What one channel's vertical controls have set. Member `x` is the panel value `ch1x` of
/// channel 1 and `ch2x` of channel 2 (`gain` is `ch1gain`, `pixpermv` is `ch2pixpermv`, ...).
struct ChannelState {
    std::int16_t gain = high_gain; ///< amplifier gain range, `high_gain` or `low_gain`
    double atten = 1.0 / 6.0;      ///< millivolts per code: 1/2 in low gain, 1/6 in high gain
    double scale =
        512.0 / 2400.0; ///< units of the plot per code, 512 divided by the codes of a full screen
    double pixpermv = 1.28; ///< units of the plot per millivolt at the input, 64 per division
    double mv_per_division = 50.0; ///< volts per division as selected, millivolts
    double vtfactor = 1.0;         ///< 2.0 with "Input Via Trigger", which halves the signal
    std::string vtsuffix;          ///< " (VT)" with "Input Via Trigger", else empty
    std::string invsuffix;         ///< " (inv)" with "Invert", else empty
    /// The adjust wheel's value for the vertical position, 0..1024, 512 the centre. The settings
    /// file calls it "ch1text.top", "ch2text.top".
    std::int32_t marker_wheel = 512;
    std::int16_t pos = 256;        ///< row of the trace's zero line, 0..512, 256 the centre
    std::int16_t offsetdac = 2048; ///< code that the trace mapping draws on the centre row, signed
    std::int32_t delay = 0; ///< horizontal delay that its box or the wheel gave last, picoseconds
    std::int32_t delaypts = 0;          ///< horizontal delay set now, in screen points
    std::int32_t uploaded_delaypts = 0; ///< horizontal delay of the last set-up, in screen points
    std::int32_t shown_delaypts =
        0;                     ///< horizontal delay, in points, that the shown data was taken with
    std::int16_t swoffset = 0; ///< code correction added to every code of the instrument
};

using Channels = std::array<ChannelState, 2>;

} // namespace kv408
