#include "measure/engine.h"

#include "measure/measurement_rows.h"
#include "measure/measurement_texts.h"
#include "measure/pulse_times.h"
#include "measure/sweep_pass.h"

namespace kv408 {
namespace {

/// Takes what the pass has found into the levels of a record.
void take_levels(const SweepFindings& found, MeasurementRecord& record) {
    record[meas::mid] = found.mid;
    for (const MeasurementRow& row : measurement_rows()) {
        if (row.value != nullptr) {
            record[row.field] = row.value(found);
        }
    }
}

void place_annotations(const SweepFindings& found, const MeasurementRecord& record,
                       AnnotationPlaces& places) {
    for (const MeasurementRow& row : measurement_rows()) {
        const double value = record[row.field];
        if (row.places != nullptr) {
            const MarkedSpan span = row.places(found);
            places.start[row.field] = span.start;
            places.end[row.field] = span.end;
        } else if (row.unit == MeasurementUnit::volt) {
            places.start[row.field] = value;
            places.end[row.field] = value;
        }
    }
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
