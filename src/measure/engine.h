#pragma once

#include "measure/sweep_pass.h"
#include "state/measurement_state.h"
#include "state/sweep.h"

namespace kv408 {

/// Measures both channels of `sweep` into `state`: the records (millivolts and columns), the texts,
/// and where each measurement is marked. The records that `state` holds give thresholds and
/// histogram range, so a change of signal takes three runs to settle: the first brings the extremes
/// right, the second the levels, the third what is found with their help: rise and fall times,
/// pulse widths, period and frequency.
void measure_sweep(const Sweep& sweep, MeasurementState& state);

/// Measures the columns of one trace into its `record`, as above, all but period and frequency,
/// which follow from the widths. Returns what was found on the way.
SweepFindings measure_columns(const SampleBuffer& columns, MeasurementRecord& record);

} // namespace kv408
