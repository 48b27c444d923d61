#include "measure/measurement_texts.h"

#include "state/engineering_format.h"

namespace kv408 {
namespace {

constexpr int digits = 4;
constexpr double millivolts_a_volt = 1000.0;

std::string with_unit(double value, const char* unit) {
    std::string text = engformat(value, digits);
    text += unit;
    return text;
}

std::string edge_text(double columns, double samplerate) {
    if (columns == 0.0) {
        return infinitely_fast;
    }
    return columns < 0.0 ? not_measurable : with_unit(columns / samplerate, "s");
}

} // namespace

void formatmeasvals(MeasurementTexts& texts, MeasurementRecord& record, double samplerate) {
    for (const std::size_t field : {meas::vmax, meas::vmin, meas::top, meas::base, meas::amplitude,
                                    meas::vpp, meas::vrms, meas::vmean}) {
        texts[field] = with_unit(record[field] / millivolts_a_volt, "V");
    }
    const double high = record[meas::pulse_high];
    const double low = record[meas::pulse_low];
    texts[meas::pulse_high] = high <= 0.0 ? not_measurable : with_unit(high / samplerate, "s");
    texts[meas::pulse_low] = low <= 0.0 ? not_measurable : with_unit(low / samplerate, "s");
    if (high <= 0.0 || low <= 0.0) {
        texts[meas::frequency] = not_measurable;
        texts[meas::period] = not_measurable;
    } else {
        const double period = low + high;
        record[meas::period] = period;
        record[meas::frequency] = 1.0 / period;
        texts[meas::period] = with_unit(period / samplerate, "s");
        texts[meas::frequency] = with_unit(samplerate / period, "Hz");
    }
    texts[meas::rise] = edge_text(record[meas::rise], samplerate);
    texts[meas::fall] = edge_text(record[meas::fall], samplerate);
}

} // namespace kv408
