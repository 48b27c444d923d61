#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "export/export_remark.h"
#include "export/exported_sweep.h"
#include "host/clock.h"

namespace kv408 {

/// A kind of file that a sweep can be saved as.
struct ExportType {
    std::string_view caption; ///< in lists
    std::string_view ending;  ///< of the file's name, with its point, small letters
    std::string (*bytes)(const ExportedSweep& sweep); ///< the file of a sweep
};

/// All of them, in the order of lists.
[[nodiscard]] const std::array<ExportType, 3>& export_types();

/// The type that the name of the file at `path` ends in, small and large letters alike, as an index
/// into `export_types`; nothing for any other ending.
[[nodiscard]] std::optional<std::size_t> export_type_of(const std::filesystem::path& path);

/// What the user should know before `sweep` is saved as `type`.
[[nodiscard]] ExportRemark export_remark(const ExportType& type, const ExportedSweep& sweep);

/// The name that a file of `type` gets at `time`: "Kv408_261122_130509.csv".
[[nodiscard]] std::string export_name(const ExportType& type, const LocalTime& time);

} // namespace kv408
