#include "measure/measurement_rows.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "measure/measurement_texts.h"
#include "state/measurement_state.h"

namespace kv408 {
namespace {

double largest(const SweepFindings& found) {
    return found.maximum;
}

double smallest(const SweepFindings& found) {
    return found.minimum;
}

double peak_to_peak(const SweepFindings& found) {
    return found.maximum - found.minimum;
}

double top_level(const SweepFindings& found) {
    return found.top;
}

double base_level(const SweepFindings& found) {
    return found.base;
}

double amplitude(const SweepFindings& found) {
    return found.top - found.base;
}

double effective(const SweepFindings& found) {
    return std::sqrt(found.squares / measured_columns);
}

double mean(const SweepFindings& found) {
    return found.sum / measured_columns;
}

MarkedSpan extremes(const SweepFindings& found) {
    return {found.maximum, found.minimum};
}

MarkedSpan levels(const SweepFindings& found) {
    return {found.top, found.base};
}

/// From crossing `first` to crossing `second`, counted from 0.
MarkedSpan crossings(const SweepFindings& found, std::size_t first, std::size_t second) {
    return {std::fabs(found.crossings[first]), std::fabs(found.crossings[second])};
}

MarkedSpan first_period(const SweepFindings& found) {
    return crossings(found, 0, 2);
}

// Whichever pulse comes first lies between the first two crossings, the other one after it.

MarkedSpan first_high_pulse(const SweepFindings& found) {
    return found.crossings[0] <= 0.0 ? crossings(found, 1, 2) : crossings(found, 0, 1);
}

MarkedSpan first_low_pulse(const SweepFindings& found) {
    return found.crossings[0] <= 0.0 ? crossings(found, 0, 1) : crossings(found, 1, 2);
}

MarkedSpan first_rise(const SweepFindings& found) {
    return {found.rises[0], found.rises[1]};
}

MarkedSpan first_fall(const SweepFindings& found) {
    return {found.falls[0], found.falls[1]};
}

constexpr MeasurementRow level(std::string_view name, std::string_view label, std::size_t field,
                               double (*value)(const SweepFindings&),
                               MarkedSpan (*places)(const SweepFindings&) = nullptr) {
    return {name, label, field, MeasurementUnit::volt, field, value, places, {}};
}

constexpr MeasurementRow time(std::string_view name, std::string_view label, std::size_t field,
                              MarkedSpan (*places)(const SweepFindings&),
                              std::string_view text_of_zero) {
    return {name, label, field, MeasurementUnit::second, field, nullptr, places, text_of_zero};
}

constexpr std::array rows{
    level("VMax", "Vmax", meas::vmax, largest),
    level("VMin", "Vmin", meas::vmin, smallest),
    level("Vpp", "Vpp", meas::vpp, peak_to_peak, extremes),
    level("VAmpl+", "Ampl+", meas::top, top_level),
    level("VAmpl-", "Ampl-", meas::base, base_level),
    level("VAmplPP", "Ampl", meas::amplitude, amplitude, levels),
    level("VRMS", "Vrms", meas::vrms, effective),
    level("VMean", "Vmean", meas::vmean, mean),
    // One period is what there is to see of a frequency.
    MeasurementRow{"Frequency", "f", meas::frequency, MeasurementUnit::hertz, meas::period, nullptr,
                   nullptr, not_measurable},
    time("Period", "T", meas::period, first_period, not_measurable),
    time("tRise", "tr", meas::rise, first_rise, infinitely_fast),
    time("tFall", "tf", meas::fall, first_fall, infinitely_fast),
    time("tPuls+", "tp+", meas::pulse_high, first_high_pulse, not_measurable),
    time("tPuls-", "tp-", meas::pulse_low, first_low_pulse, not_measurable),
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
