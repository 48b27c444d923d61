#pragma once

#include <cstddef>
#include <string_view>

namespace kv408 {

/// One measurement that can be chosen.
struct MeasurementRow {
    std::string_view name;      ///< in the selection lists
    std::string_view label;     ///< in the results panel
    std::size_t field = 0;      ///< of the record and the texts
    std::size_t mark_field = 0; ///< whose places are marked on the trace
    bool in_time = false;       ///< marked at two columns of the trace instead of at two levels
};

/// The measurement that the selection lists call `name`; nullptr for any other text.
[[nodiscard]] const MeasurementRow* measurement_row(std::string_view name);

} // namespace kv408
