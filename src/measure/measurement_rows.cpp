#include "measure/measurement_rows.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "state/measurement_state.h"

namespace kv408 {
namespace {

using Found = const SweepFindings&;

/// From crossing `first` to crossing `second`, counted from 0.
MarkedSpan crossings(Found found, std::size_t first, std::size_t second) {
    return {std::fabs(found.crossings[first]), std::fabs(found.crossings[second])};
}

/// The first pulse, which lies between the first two crossings, or the one after it.
MarkedSpan pulse(Found found, bool first) {
    return first ? crossings(found, 0, 1) : crossings(found, 1, 2);
}

bool falls_first(Found found) {
    return found.crossings[0] <= 0.0;
}

constexpr MeasurementRow level(std::string_view name, std::string_view label, std::size_t field,
                               double (*value)(Found), MarkedSpan (*places)(Found) = nullptr) {
    return {name, label, field, MeasurementUnit::volt, field, value, places};
}

constexpr MeasurementRow time(std::string_view name, std::string_view label, std::size_t field,
                              NoValue why_zero, MarkedSpan (*places)(Found)) {
    return {name, label, field, MeasurementUnit::second, field, nullptr, places, why_zero};
}

constexpr std::array rows{
    level("VMax", "Vmax", meas::vmax, [](Found found) { return found.maximum; }),
    level("VMin", "Vmin", meas::vmin, [](Found found) { return found.minimum; }),
    level(
        "Vpp", "Vpp", meas::vpp, [](Found found) { return found.maximum - found.minimum; },
        [](Found found) {
            return MarkedSpan{found.maximum, found.minimum};
        }),
    level("VAmpl+", "Ampl+", meas::top, [](Found found) { return found.top; }),
    level("VAmpl-", "Ampl-", meas::base, [](Found found) { return found.base; }),
    level(
        "VAmplPP", "Ampl", meas::amplitude, [](Found found) { return found.top - found.base; },
        [](Found found) {
            return MarkedSpan{found.top, found.base};
        }),
    level("VRMS", "Vrms", meas::vrms,
          [](Found found) { return std::sqrt(found.squares / measured_columns); }),
    level("VMean", "Vmean", meas::vmean, [](Found found) { return found.sum / measured_columns; }),
    // One period is what there is to see of a frequency.
    MeasurementRow{"Frequency", "f", meas::frequency, MeasurementUnit::hertz, meas::period, nullptr,
                   nullptr},
    time("Period", "T", meas::period, NoValue::no_edge,
         [](Found found) { return crossings(found, 0, 2); }),
    time("tRise", "tr", meas::rise, NoValue::too_steep,
         [](Found found) {
             return MarkedSpan{found.rises[0], found.rises[1]};
         }),
    time("tFall", "tf", meas::fall, NoValue::too_steep,
         [](Found found) {
             return MarkedSpan{found.falls[0], found.falls[1]};
         }),
    time("tPuls+", "tp+", meas::pulse_high, NoValue::no_edge,
         [](Found found) { return pulse(found, !falls_first(found)); }),
    time("tPuls-", "tp-", meas::pulse_low, NoValue::no_edge,
         [](Found found) { return pulse(found, falls_first(found)); }),
};

} // namespace

std::span<const MeasurementRow> measurement_rows() {
    return rows;
}

const MeasurementRow* measurement_row(std::string_view name) {
    const auto* const found = std::find_if(
        rows.begin(), rows.end(), [name](const MeasurementRow& row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

std::vector<std::string> measurement_names() {
    std::vector<std::string> names = {"---"};
    std::transform(rows.begin(), rows.end(), std::back_inserter(names),
                   [](const MeasurementRow& row) { return std::string(row.name); });
    return names;
}

} // namespace kv408
