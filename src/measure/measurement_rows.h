#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "measure/sweep_pass.h"

namespace kv408 {

/// What a measurement's value is. A voltage is marked by two level lines, all else by two dots on
/// the trace.
enum class MeasurementUnit {
    volt,   ///< millivolts in the record
    second, ///< display columns in the record
    hertz,  ///< one over display columns in the record
};

/// Why a sweep has no value of a measurement.
enum class NoValue {
    no_edge,   ///< no such edge or pulse is on the screen
    too_steep, ///< the edge takes no time that the points could tell
};

/// Where a measurement is marked on the trace: two levels in millivolts or two fractional columns.
struct MarkedSpan {
    double start = 0.0;
    double end = 0.0;
};

/// One measurement that can be chosen: all that the program knows of it.
struct MeasurementRow {
    std::string_view name;  ///< in the selection lists
    std::string_view label; ///< in the results panel
    std::size_t field;      ///< of the record and the texts
    MeasurementUnit unit;
    std::size_t mark_field; ///< whose places are marked; of the frequency its period
    /// The value for the record; empty: `calcpulsetimes` or `formatmeasvals` writes it.
    double (*value)(const SweepFindings& found);
    /// Where `mark_field` is marked; empty: a voltage at its value, the frequency nowhere itself.
    MarkedSpan (*places)(const SweepFindings& found);
    NoValue why_zero = NoValue::no_edge; ///< what a time of exactly 0 says
};

/// All measurements, in the order of the selection lists. The order is part of the settings.
[[nodiscard]] std::span<const MeasurementRow> measurement_rows();

/// The measurement that the selection lists call `name`; nullptr for any other text.
[[nodiscard]] const MeasurementRow* measurement_row(std::string_view name);

/// The entries of the selection lists: no measurement, "---", and then all.
[[nodiscard]] std::vector<std::string> measurement_names();

} // namespace kv408
