#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "autoset/signal_look.h"

namespace kv408 {

/// Where on the screen a trace is to lie.
struct Place {
    double centre = 0.0; ///< of the trace, divisions above the centre of the screen
    double height = 6.5; ///< what it may take, divisions
};

/// What shows a signal there.
struct VerticalFit {
    std::string vdiv;         ///< entry of the V/div list
    std::int32_t wheel = 512; ///< the wheel's value for the zero line, 0..1024
};

/// The finest V/div with which `look` is not higher than `place` lets it be and its zero line, with
/// the trace in its place, is not farther than the screen's edge; 0.5V where there is none.
[[nodiscard]] VerticalFit fit_vertical(const SignalLook& look, const Place& place);

/// A time base and the delay of both channels.
struct TimeFit {
    std::string time_base;  ///< entry of the time-base list
    std::int32_t delay = 0; ///< picoseconds
};

/// The fastest time base that shows two periods of `picoseconds`, and so at most five.
[[nodiscard]] TimeFit fit_period(double picoseconds);

/// A time base, and a delay where that can be set, with which what comes `picoseconds` after the
/// trigger lies in the middle of the screen, or as close to it as can be.
[[nodiscard]] TimeFit fit_edge(double picoseconds);

/// Level and hysteresis for a trigger.
struct LevelFit {
    std::int32_t wheel = 512;    ///< the wheel's value for the level, 0..1024
    std::int32_t hysteresis = 0; ///< millivolts
};

/// The middle of `look` as a level, whose source divides its signal by `division`.
[[nodiscard]] LevelFit fit_level(const SignalLook& look, double division);

} // namespace kv408
