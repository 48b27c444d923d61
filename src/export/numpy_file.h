#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "export/exported_sweep.h"

namespace kv408 {

/// What stands in front of the data of a NumPy file: version 1.0, padded so that they begin at a
/// multiple of 64 bytes. `type` as Python writes it, "'<u4'"; `shape` without a number: one
/// element.
[[nodiscard]] std::string numpy_header(std::string_view type,
                                       std::initializer_list<std::size_t> shape);

/// `sweep` as the bytes of a NumPy file: a structured array of float64, a line for each point, with
/// the columns "time", "ch1", "ch2", or "time1", "ch1", "time2", "ch2" where the channels' times
/// differ; of computed traces "math1", "math1max", ... with "time_math1". Seconds and volts, or the
/// unit of what was computed. A channel with fewer points has no numbers (NaN) beyond its last.
[[nodiscard]] std::string numpy_file(const ExportedSweep& sweep);

} // namespace kv408
