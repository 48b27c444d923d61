#pragma once

#include <span>

#include "state/measurement_state.h"

namespace kv408 {

/// Writes the edge times and pulse widths of one channel, in columns, into `record` and leaves
/// every other field as it is.
///
/// `crossings` are the crossings of the mid level in their order, rising ones positive, falling
/// ones negative; a crossing at exactly 0 begins no pulse. `rises` and `falls` hold the two ends of
/// each edge in turn; an end without its partner does not count.
void calcpulsetimes(MeasurementRecord& record, std::span<const double> crossings,
                    std::span<const double> rises, std::span<const double> falls);

/// Writes period and frequency into `record` where it has both pulse widths; otherwise these two
/// fields stay as they are.
void calcperiod(MeasurementRecord& record);

} // namespace kv408
