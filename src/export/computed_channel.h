#pragma once

#include <cstddef>
#include <string>

#include "export/exported_sweep.h"
#include "maths/maths_trace.h"

namespace kv408 {

/// The name of the computed trace in `place`, 0 or 1: "MATH1".
[[nodiscard]] std::string maths_name(std::size_t place);

/// What `channel` is a line of: "MATH1" of "MATH1MAX"; any other by its own name.
[[nodiscard]] std::string trace_of(const ExportedChannel& channel);

/// Whether the channels of `sweep` at `index` and behind it are the two lines of an envelope.
[[nodiscard]] bool envelope_at(const ExportedSweep& sweep, std::size_t index);

/// Adds `trace`, which was computed of `sweep` and is called `name`, to `exported`; an envelope as
/// two channels. `per_division` is in the unit of the trace, `position` in divisions.
void add_computed(const MathsTrace& trace, const std::string& name, double per_division,
                  double position, const Sweep& sweep, ExportedSweep& exported);

} // namespace kv408
