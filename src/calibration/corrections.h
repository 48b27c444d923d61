#pragma once

// The arithmetic of the calibrations. "In use" is always the value that the instrument works with
// while the measurement is taken.

#include <cstdint>
#include <optional>

namespace kv408 {

/// The frequency that the time base is calibrated with, hertz.
inline constexpr double calibration_hz = 10e6;

/// True for a ratio of expected to measured voltage that a gain may be corrected by: 0.9 counts,
/// 1.1 does not.
[[nodiscard]] bool accepted_gain_ratio(double ratio);

/// The gain that makes `measured_mv` out of `expected_mv`, both millivolts peak to peak; nothing
/// when nothing was measured or the ratio is not accepted.
[[nodiscard]] std::optional<std::int16_t>
corrected_gain(std::int32_t in_use, std::int32_t measured_mv, double expected_mv);

/// Codes per millivolt of the input that an offset is corrected by.
struct OffsetFactor {
    bool high_gain = true;    ///< range "50mV" and finer, else the coarser one
    bool via_trigger = false; ///< the input comes through the trigger, which halves it
};

/// 6 and 2 codes per millivolt in high and low gain, half of that through the trigger.
[[nodiscard]] double codes_per_millivolt(const OffsetFactor& factor);

/// The offset that brings a mean of `mean_mv` to 0.
[[nodiscard]] std::int16_t corrected_offset(std::int32_t in_use, double mean_mv, double factor);

/// True when an input is quiet enough to calibrate an offset: below 30 mV peak to peak, but not 0,
/// which stands for nothing measured.
[[nodiscard]] bool quiet_enough(double vpp_mv);

/// The time-base scale that makes the measured `frequency`, hertz, the 10 MHz of the calibration;
/// nothing unless it is that within 10 %: from 9000001 on and below 11000000.
[[nodiscard]] std::optional<std::int16_t> corrected_time_scale(std::int32_t in_use,
                                                               std::int32_t frequency);

} // namespace kv408
