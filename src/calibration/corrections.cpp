#include "calibration/corrections.h"

#include "state/rounding.h"

namespace kv408 {

bool accepted_gain_ratio(double ratio) {
    return ratio >= 0.9 && ratio < 1.1;
}

std::optional<std::int16_t> corrected_gain(std::int32_t in_use, std::int32_t measured_mv,
                                           double expected_mv) {
    if (measured_mv == 0) {
        return std::nullopt;
    }
    const double ratio = expected_mv / measured_mv;
    if (!accepted_gain_ratio(ratio)) {
        return std::nullopt;
    }
    return round_to_int16(in_use * ratio);
}

double codes_per_millivolt(const OffsetFactor& factor) {
    const double codes = factor.high_gain ? 6.0 : 2.0;
    return factor.via_trigger ? codes / 2.0 : codes;
}

std::int16_t corrected_offset(std::int32_t in_use, double mean_mv, double factor) {
    return round_to_int16(in_use - round_half_even(mean_mv * factor));
}

bool quiet_enough(double vpp_mv) {
    constexpr double loud_mv = 30.0;
    // A sampler always has noise: exactly 0 means that nothing was measured.
    return vpp_mv > 0.0 && vpp_mv < loud_mv;
}

std::optional<std::int16_t> corrected_time_scale(std::int32_t in_use, std::int32_t frequency) {
    constexpr std::int32_t lowest = 9000001;
    constexpr std::int32_t too_high = 11000000;
    if (frequency < lowest || frequency >= too_high) {
        return std::nullopt;
    }
    const double error = (calibration_hz - frequency) / calibration_hz;
    return round_to_int16(in_use * error + in_use);
}

} // namespace kv408
