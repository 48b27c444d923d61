#pragma once

#include <vector>

#include "display/picture_coder.h"
#include "host/clock.h"
#include "panel/front_panel.h"
#include "state/reference_curve.h"

namespace kv408 {

/// What the picture of the plot does not say by itself, as lines to stand under it, in the colours
/// that the panel shows it in: time per division and the date `time`; volts per division, offset
/// and delay of each channel that is shown; the results that are shown; and the captions of
/// `references`, kept or computed.
[[nodiscard]] std::vector<TextLine> scale_lines(const FrontPanel& panel, const LocalTime& time,
                                                const std::vector<ShownReference>& references = {});

} // namespace kv408
