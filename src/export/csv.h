#pragma once

#include <string>

#include "export/exported_sweep.h"

namespace kv408 {

/// `sweep` as comma-separated values: lines that begin with "# " and say what it was taken with,
/// one line of headings, and a line for each point. The channels share one column of times where
/// theirs are the same.
[[nodiscard]] std::string csv_text(const ExportedSweep& sweep);

/// Its comment lines about the settings of `sweep` alone, without its date and number.
[[nodiscard]] std::string set_up_comments(const ExportedSweep& sweep);

/// The headings and points alone, separated by tabs, as a spreadsheet takes them from the
/// clipboard.
[[nodiscard]] std::string tab_separated(const ExportedSweep& sweep);

} // namespace kv408
