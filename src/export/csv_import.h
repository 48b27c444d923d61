#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "export/exported_sweep.h"

namespace kv408 {

/// What came of reading a file.
struct CsvImport {
    std::optional<ExportedSweep> sweep; ///< nothing where the file cannot be taken
    std::string problem;                ///< why not, with the line: "line 14: not a number"
};

/// Reads `text`, which `csv_text` wrote or somebody wrote in its form, with line ends of either
/// kind. Comments that it does not know are passed over, and so are those that are missing: the
/// sweep then has what a new `ExportedSweep` has there. Times must be evenly spaced.
[[nodiscard]] CsvImport csv_import(std::string_view text);

} // namespace kv408
