#include "measure/engine.h"

#include <cmath>

#include "measure/measurement_texts.h"
#include "measure/pulse_times.h"
#include "measure/sweep_pass.h"

namespace kv408 {
namespace {

/// Takes what the pass has found into the levels of a record.
void take_levels(const SweepFindings& findings, MeasurementRecord& record) {
    constexpr double columns = measured_columns;
    record[meas::top] = findings.top;
    record[meas::base] = findings.base;
    record[meas::mid] = findings.mid;
    record[meas::vmax] = findings.maximum;
    record[meas::vmin] = findings.minimum;
    record[meas::vpp] = findings.maximum - findings.minimum;
    record[meas::amplitude] = findings.top - findings.base;
    record[meas::vmean] = findings.sum / columns;
    record[meas::vrms] = std::sqrt(findings.squares / columns);
}

/// Marks a field between two places.
void mark(AnnotationPlaces& places, std::size_t field, double start, double end) {
    places.start[field] = start;
    places.end[field] = end;
}

void place_annotations(const SweepFindings& findings, const MeasurementRecord& record,
                       AnnotationPlaces& places) {
    for (const std::size_t level :
         {meas::vmax, meas::vmin, meas::top, meas::base, meas::vrms, meas::vmean}) {
        mark(places, level, record[level], record[level]);
    }
    mark(places, meas::vpp, record[meas::vmax], record[meas::vmin]);
    mark(places, meas::amplitude, record[meas::top], record[meas::base]);
    const auto crossing = [&findings](std::size_t index) {
        return std::fabs(findings.crossings[index]);
    };
    mark(places, meas::period, crossing(0), crossing(2));
    // Whichever pulse comes first lies between the first two crossings, the other one after it.
    const bool falls_first = findings.crossings[0] <= 0.0;
    const std::size_t first_high = falls_first ? 1 : 0;
    const std::size_t first_low = falls_first ? 0 : 1;
    mark(places, meas::pulse_high, crossing(first_high), crossing(first_high + 1));
    mark(places, meas::pulse_low, crossing(first_low), crossing(first_low + 1));
    mark(places, meas::rise, findings.rises[0], findings.rises[1]);
    mark(places, meas::fall, findings.falls[0], findings.falls[1]);
}

} // namespace

void measure_sweeps(const Samples& samples, double samplerate, MeasurementState& state) {
    const auto findings = pass_over(samples, state.measresults);
    for (std::size_t channel = 0; channel < findings.size(); ++channel) {
        const SweepFindings& found = findings[channel];
        MeasurementRecord& record = state.measresults[channel];
        take_levels(found, record);
        calcpulsetimes(state, static_cast<int>(channel) + 1, found.crossings.found(),
                       found.rises.found(), found.falls.found());
        formatmeasvals(state.meastexts[channel], record, samplerate);
        place_annotations(found, record, state.annotations[channel]);
    }
}

void MeasurementEngine::makemeasurement() {
    if (panel_.check1.checked()) {
        measure_sweeps(samples_, time_base_.samplerate, state_);
    }
}

} // namespace kv408
