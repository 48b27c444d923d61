#pragma once

#include <span>
#include <vector>

#include "measure/measured_value.h"

namespace kv408 {

/// All measurements of a curve that no channel has, in the order of `measurement_rows`: levels in
/// the unit of `columns`, which are those of the screen from left to right, at least one,
/// `columns_per_second` of them a second. Fewer than `measured_columns` are spread over as many;
/// times are right then too. Each is what the engine settles at when this sweep comes again and
/// again.
[[nodiscard]] std::vector<MeasuredValue> curve_measurements(std::span<const double> columns,
                                                            double columns_per_second);

} // namespace kv408
