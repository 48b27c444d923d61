#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kv408 {

/// The eleven calibration values in the order of the instrument's flash: vertical offsets (CH1 low
/// and high gain, CH2 low and high gain; codes, 2048 is none), vertical gains (the same order;
/// 10000 is unity), time-base scale (10000 is unity), bridge offset at 8 ns (picoseconds above
/// -100), ADC delay (50..200).
using CalibrationRecord = std::array<std::int32_t, 11>;

/// How many values the record has.
inline constexpr std::size_t record_size = std::tuple_size_v<CalibrationRecord>;

/// The record of an instrument that has not been calibrated.
inline constexpr CalibrationRecord default_calibration = {2048,  2048,  2048,  2048, 10000, 10000,
                                                          10000, 10000, 10000, 100,  70};

} // namespace kv408
