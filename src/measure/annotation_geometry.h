#pragma once

#include "state/channel_state.h"
#include "state/measurement_state.h"
#include "state/samples.h"

namespace kv408 {

/// A line across the plot, from column 1 to column 639, at `level` millivolts of the channel.
[[nodiscard]] AnnotationGeometry annolevelline(const ChannelState& channel, double level);

/// A square of 8 by 8 units around the channel's trace at the fractional sample index `position`;
/// between two samples the trace is taken as straight. `position` and the sample after it must lie
/// in the sample buffer, 0 <= `position` < 7500.
[[nodiscard]] AnnotationGeometry annomarkrect(const ChannelState& channel,
                                              const SampleBuffer& samples, double position);

} // namespace kv408
