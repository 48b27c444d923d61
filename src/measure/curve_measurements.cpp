#include "measure/curve_measurements.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "measure/engine.h"
#include "measure/measurement_rows.h"
#include "measure/pulse_times.h"
#include "measure/sweep_pass.h"
#include "state/units.h"

namespace kv408 {
namespace {

/// Runs of the engine until nothing changes any more: extremes, levels, times.
constexpr int runs_to_settle = 3;

/// The power of two that brings the greatest of `columns` near to, and not above, 1024: the engine
/// counts in millivolts and knows none beyond 10 V. It takes nothing away from the digits.
double factor_for(std::span<const double> columns) {
    constexpr int most_bits = 10;
    double most = 0.0;
    for (const double value : columns) {
        most = std::max(most, std::fabs(value));
    }
    int exponent = 0;
    std::frexp(most, &exponent);
    return most > 0.0 && std::isfinite(most) ? std::ldexp(1.0, most_bits - exponent) : 1.0;
}

} // namespace

std::vector<MeasuredValue> curve_measurements(std::span<const double> columns,
                                              double columns_per_second) {
    const double factor = factor_for(columns);
    const auto samples = std::make_unique<SampleBuffer>();
    for (std::size_t column = 0; column < measured_columns; ++column) {
        samples->mv.at(column + 1) =
            columns[std::min(column * columns.size() / measured_columns, columns.size() - 1)] *
            factor;
    }
    MeasurementRecord record = {};
    for (int run = 0; run < runs_to_settle; ++run) {
        measure_columns(*samples, record);
    }
    calcperiod(record);
    const double shown_per_second =
        columns_per_second * measured_columns / static_cast<double>(columns.size());
    std::vector<MeasuredValue> values;
    for (const MeasurementRow& row : measurement_rows()) {
        values.push_back(measured_value(row, record, shown_per_second));
        if (row.unit == MeasurementUnit::volt) {
            *values.back().value *= millivolts_per_volt / factor;
        }
    }
    return values;
}

} // namespace kv408
