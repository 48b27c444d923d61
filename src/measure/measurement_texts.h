#pragma once

#include "state/measurement_state.h"
#include "state/shared_texts.h"

namespace kv408 {

/// Writes the texts of one channel's `record`: volts, seconds and hertz with four digits. It also
/// computes the record's period and frequency, when both pulse widths are there; otherwise these
/// two fields stay as they are. `samplerate` is the number of display columns a second, above 0.
void formatmeasvals(MeasurementTexts& texts, MeasurementRecord& record, double samplerate);

} // namespace kv408
