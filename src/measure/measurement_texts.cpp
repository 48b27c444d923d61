#include "measure/measurement_texts.h"

#include "measure/measured_value.h"
#include "measure/measurement_rows.h"
#include "measure/pulse_times.h"
#include "state/engineering_format.h"

namespace kv408 {
namespace {

constexpr int digits = 4;
std::string text_of(const MeasurementRow& row, const MeasurementRecord& record, double samplerate) {
    const MeasuredValue measured = measured_value(row, record, samplerate);
    if (!measured.value) {
        return std::string(measured.why == NoValue::too_steep ? infinitely_fast : not_measurable);
    }
    return engformat(*measured.value, digits).append(unit_name(row.unit));
}

} // namespace

void formatmeasvals(MeasurementTexts& texts, MeasurementRecord& record, double samplerate) {
    calcperiod(record);
    for (const MeasurementRow& row : measurement_rows()) {
        texts[row.field] = text_of(row, record, samplerate);
    }
}

} // namespace kv408
