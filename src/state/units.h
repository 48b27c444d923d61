#pragma once

// The program counts in picoseconds and millivolts; what leaves it is in seconds and volts.

namespace kv408 {

inline constexpr double picoseconds_per_second = 1e12;
inline constexpr double millivolts_per_volt = 1e3;

} // namespace kv408
