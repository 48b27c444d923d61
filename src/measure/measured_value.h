#pragma once

#include <optional>
#include <string_view>

#include "measure/measurement_rows.h"
#include "state/measurement_state.h"

namespace kv408 {

/// A measurement of a sweep as a number.
struct MeasuredValue {
    std::optional<double> value;    ///< volts, seconds or hertz
    NoValue why = NoValue::no_edge; ///< without a value: why there is none

    friend bool operator==(const MeasuredValue&, const MeasuredValue&) = default;
};

/// The value of `row` in `record`, whose sweep has `columns_per_second` display columns per second,
/// above 0.
[[nodiscard]] MeasuredValue measured_value(const MeasurementRow& row,
                                           const MeasurementRecord& record,
                                           double columns_per_second);

/// What a value is counted in: "V", "s" or "Hz".
[[nodiscard]] std::string_view unit_name(MeasurementUnit unit);

/// What people read of it.
[[nodiscard]] std::string_view reason_text(NoValue why);

} // namespace kv408
