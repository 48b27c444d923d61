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

SweepFindings measure_columns(const SampleBuffer& columns, MeasurementRecord& record) {
    SweepFindings found = pass_over(columns, record);
    take_levels(found, record);
    calcpulsetimes(record, found.crossings.found(), found.rises.found(), found.falls.found());
    return found;
}

void measure_sweep(const Sweep& sweep, MeasurementState& state) {
    for (std::size_t channel = 0; channel < sweep.channel.size(); ++channel) {
        const ChannelSweep& taken = *sweep.channel[channel];
        MeasurementRecord& record = state.measresults[channel];
        const SweepFindings found = measure_columns(taken.columns, record);
        formatmeasvals(state.meastexts[channel], record, taken.columns_per_second);
        place_annotations(found, record, state.annotations[channel]);
    }
}

} // namespace kv408
