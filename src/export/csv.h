#pragma once

#include <string>

#include "export/exported_sweep.h"

namespace kv408 {

/// `sweep` as comma-separated values: comment lines that begin with "# " and say with which
/// settings it was taken, one line of headings, and a line for each point. Channels whose times are
/// the same share one column of times. Seconds and volts, or the unit of what was computed.
[[nodiscard]] std::string csv_text(const ExportedSweep& sweep);

/// Its comment lines about the settings of `sweep` alone, without its date and number.
[[nodiscard]] std::string set_up_comments(const ExportedSweep& sweep);

/// The headings and points alone, separated by tabs, as a spreadsheet takes them from the
/// clipboard.
[[nodiscard]] std::string tab_separated(const ExportedSweep& sweep);

} // namespace kv408
