#pragma once

#include <cstdint>
#include <string>

#include "export/export_remark.h"
#include "export/exported_sweep.h"

namespace kv408 {

/// The sample rate of a sigrok session of `sweep`, whole samples per second, halves to even; 0 for
/// a sweep without an interval.
[[nodiscard]] std::uint64_t sigrok_sample_rate(const ExportedSweep& sweep);

/// Why `sweep` cannot be saved as a sigrok session, or where the sample rate rounds.
[[nodiscard]] ExportRemark sigrok_remark(const ExportedSweep& sweep);

/// `sweep`, whose channels share their times, as a sigrok session of version 2: a ZIP archive with
/// the channels' volts as float32. Such a file knows no time of the first point.
[[nodiscard]] std::string sigrok_session(const ExportedSweep& sweep);

} // namespace kv408
