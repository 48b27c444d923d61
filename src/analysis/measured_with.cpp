#include "analysis/measured_with.h"

#include "state/code_conversion.h"

namespace kv408 {

MeasuredWith measured_with(SweepMode mode, const ChannelSweep& sweep) {
    return {.mode = mode,
            .first_time = sweep.first_time,
            .time_per_point = sweep.time_per_point,
            .conversion = sweep.conversion,
            .gain = sweep.gain,
            .trigger = sweep.trigger};
}

double level_of(const MeasuredWith& with, int code) {
    return converted(with.conversion, static_cast<std::int16_t>(code)).mv;
}

} // namespace kv408
