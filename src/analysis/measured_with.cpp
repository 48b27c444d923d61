#include "analysis/measured_with.h"

#include "state/code_conversion.h"

namespace kv408 {
namespace {

/// In the middle of the scale no code is stopped at an end of it.
constexpr int middle_code = 2048;

} // namespace

MeasuredWith measured_with(SweepMode mode, const ChannelSweep& sweep) {
    return {.mode = mode,
            .first_time = sweep.first_time,
            .time_per_point = sweep.time_per_point,
            .conversion = sweep.conversion,
            .gain = sweep.gain,
            .trigger = sweep.trigger};
}

std::string_view difference(const MeasuredWith& before, const MeasuredWith& now) {
    if (before.mode != now.mode || before.time_per_point != now.time_per_point) {
        return "Time base";
    }
    if (before.first_time != now.first_time) {
        return "Delay";
    }
    if (before.trigger != now.trigger) {
        return "Trigger";
    }
    if (before.gain != now.gain) {
        return "Range";
    }
    if (before.conversion.inverted != now.conversion.inverted) {
        return "Invert";
    }
    if (before.conversion.vtfactor != now.conversion.vtfactor) {
        return "Input Via Trigger";
    }
    return before == now ? "" : "Calibration";
}

double level_of(const MeasuredWith& with, int code) {
    return converted(with.conversion, static_cast<std::int16_t>(code)).mv;
}

double level_at(const MeasuredWith& with, double code) {
    return level_of(with, middle_code) + (code - middle_code) * level_step(with);
}

double code_at(const MeasuredWith& with, double level) {
    return middle_code + (level - level_of(with, middle_code)) / level_step(with);
}

} // namespace kv408
