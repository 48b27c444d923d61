#pragma once

namespace kv408 {

inline constexpr double picoseconds_per_second = 1e12;
inline constexpr double millivolts_per_volt = 1e3;

} // namespace kv408
