#pragma once

#include "panel/front_panel.h"
#include "state/measurement_state.h"
#include "state/samples.h"
#include "state/time_base_state.h"

namespace kv408 {

/// Measures both channels' sweeps into `state`: the records (millivolts and columns), the texts
/// with `samplerate` columns a second, and where each measurement is marked. The records that
/// `state` holds give thresholds and histogram range, so a change of signal takes three runs to
/// settle: the first brings the extremes right, the second the levels, the third what is found
/// with their help: rise and fall times, pulse widths, period and frequency.
void measure_sweeps(const Samples& samples, double samplerate, MeasurementState& state);

/// The measurement engine behind its switch.
class MeasurementEngine {
public:
    MeasurementEngine(const FrontPanel& panel, const Samples& samples,
                      const TimeBaseState& time_base, MeasurementState& state)
        : panel_(panel), samples_(samples), time_base_(time_base), state_(state) {}

    /// Measures both channels' sweeps; changes nothing while `Check1` is not checked.
    void makemeasurement();

private:
    const FrontPanel& panel_;
    const Samples& samples_;
    const TimeBaseState& time_base_;
    MeasurementState& state_;
};

} // namespace kv408
