#pragma once

#include <string>

#include "export/exported_sweep.h"

namespace kv408 {

/// `sweep` as the bytes of a NumPy file: a structured array of float64, a line for each point, with
/// the columns "time", "ch1", "ch2", or "time1", "ch1", "time2", "ch2" where the channels' times
/// differ. Seconds and volts. A channel with fewer points has no numbers (NaN) beyond its last.
[[nodiscard]] std::string numpy_file(const ExportedSweep& sweep);

} // namespace kv408
