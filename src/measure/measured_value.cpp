#include "measure/measured_value.h"

#include <array>

namespace kv408 {

MeasuredValue measured_value(const MeasurementRow& row, const MeasurementRecord& record,
                             double columns_per_second) {
    constexpr double millivolts_per_volt = 1000.0;
    const double value = record[row.field];
    if (row.unit == MeasurementUnit::volt) {
        return {.value = value / millivolts_per_volt};
    }
    // Without both widths the record still has the period of a sweep before.
    const bool periodic = record[meas::pulse_high] > 0.0 && record[meas::pulse_low] > 0.0;
    if (row.mark_field == meas::period && !periodic) {
        return {.value = {}, .why = NoValue::no_edge};
    }
    if (row.unit == MeasurementUnit::hertz) {
        return {.value = columns_per_second / record[row.mark_field]};
    }
    if (value > 0.0) {
        return {.value = value / columns_per_second};
    }
    return {.value = {}, .why = value == 0.0 ? row.why_zero : NoValue::no_edge};
}

std::string_view unit_name(MeasurementUnit unit) {
    constexpr std::array<std::string_view, 3> names = {"V", "s", "Hz"};
    return names.at(static_cast<std::size_t>(unit));
}

std::string_view reason_text(NoValue why) {
    return why == NoValue::no_edge ? "no edge on the screen" : "steeper than can be told";
}

} // namespace kv408
