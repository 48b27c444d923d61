#pragma once

#include <string_view>

#include "state/measurement_state.h"

namespace kv408 {

/// What a result says when there is no such pulse or edge, and when an edge takes no time.
inline constexpr std::string_view not_measurable = "---";
inline constexpr std::string_view infinitely_fast = "-inf-";

/// Writes the texts of one channel's `record`: volts, seconds and hertz with four digits. It also
/// computes the record's period and frequency, when both pulse widths are there; otherwise these
/// two fields stay as they are. `samplerate` is the number of display columns per second, above 0.
void formatmeasvals(MeasurementTexts& texts, MeasurementRecord& record, double samplerate);

} // namespace kv408
