#include "measure/measurement_texts.h"

#include "measure/measurement_rows.h"
#include "state/engineering_format.h"

namespace kv408 {
namespace {

constexpr int digits = 4;
constexpr double millivolts_per_volt = 1000.0;

std::string text_of(const MeasurementRow& row, const MeasurementRecord& record, double samplerate) {
    const double value = record[row.field];
    switch (row.unit) {
    case MeasurementUnit::volt:
        return engformat(value / millivolts_per_volt, digits) + "V";
    case MeasurementUnit::hertz:
        return engformat(samplerate / record[row.mark_field], digits) + "Hz";
    case MeasurementUnit::second:
        break;
    }
    if (value == 0.0) {
        return std::string(row.text_of_zero);
    }
    return value < 0.0 ? std::string(not_measurable) : engformat(value / samplerate, digits) + "s";
}

} // namespace

void formatmeasvals(MeasurementTexts& texts, MeasurementRecord& record, double samplerate) {
    const double high = record[meas::pulse_high];
    const double low = record[meas::pulse_low];
    const bool periodic = high > 0.0 && low > 0.0;
    if (periodic) {
        const double period = low + high;
        record[meas::period] = period;
        record[meas::frequency] = 1.0 / period;
    }
    for (const MeasurementRow& row : measurement_rows()) {
        const bool there = periodic || row.mark_field != meas::period;
        texts[row.field] = there ? text_of(row, record, samplerate) : std::string(not_measurable);
    }
}

} // namespace kv408
