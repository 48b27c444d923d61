#pragma once

#include <cstdint>
#include <string_view>

#include "state/sweep.h"

namespace kv408 {

/// The settings of a channel's sweep that decide what its points and codes mean: sweeps that agree
/// in all of them belong into one density.
struct MeasuredWith {
    SweepMode mode = SweepMode::block;
    double first_time = 0.0;     ///< of the first point, after the trigger, picoseconds
    double time_per_point = 0.0; ///< picoseconds
    Conversion conversion;       ///< of codes into millivolts
    std::int16_t gain = 0;       ///< range, `high_gain` or `low_gain`
    TriggerSetting trigger;

    friend bool operator==(const MeasuredWith&, const MeasuredWith&) = default;
};

/// What `sweep`, taken in `mode`, was measured with.
[[nodiscard]] MeasuredWith measured_with(SweepMode mode, const ChannelSweep& sweep);

/// What `now` is measured with otherwise than `before`, for people: "Time base", "Delay", ...; the
/// first that differs, and nothing where both agree.
[[nodiscard]] std::string_view difference(const MeasuredWith& before, const MeasuredWith& now);

/// The time of `point`, 0 the first, after the trigger, picoseconds; fractions lie between points.
[[nodiscard]] constexpr double time_of(const MeasuredWith& with, double point) {
    return with.first_time + point * with.time_per_point;
}

/// What `code`, as the instrument sends it, stands for at the input, millivolts. With an inverted
/// channel higher codes stand for lower levels.
[[nodiscard]] double level_of(const MeasuredWith& with, int code);

/// By how much the level changes from one code to the next, millivolts; below 0 with an inverted
/// channel.
[[nodiscard]] constexpr double level_step(const MeasuredWith& with) {
    const double step = with.conversion.atten * with.conversion.vtfactor;
    return with.conversion.inverted ? -step : step;
}

/// What `code`, which may lie between codes and beyond the scale, stands for at the input,
/// millivolts: as `level_of`, but no code stops at an end.
[[nodiscard]] double level_at(const MeasuredWith& with, double code);

/// The code, between codes and even beyond the scale, that stands for `level`, millivolts.
[[nodiscard]] double code_at(const MeasuredWith& with, double level);

} // namespace kv408
