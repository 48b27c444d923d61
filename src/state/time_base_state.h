#pragma once

namespace kv408 {

/// What the time-base list has set. The start values are those of "20ns/div".
struct TimeBaseState {
    double tbresolution = 313.0; ///< delay from one point to the next, picoseconds
    double samplerate = 3.2e9;   ///< screen columns per second: 64 divided by the time per division
    double hstretch = 1.0016;    ///< step of the fractional source position, no unit
};

} // namespace kv408
