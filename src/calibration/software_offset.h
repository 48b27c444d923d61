#pragma once

#include "host/message_boxes.h"
#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/samples.h"

namespace kv408 {

/// "Software Calibrate Offset": a code correction of each channel that takes the present mean for
/// 0 V. The calibration record has no part in it.
class SoftwareOffset {
public:
    SoftwareOffset(FrontPanel& panel, AcquisitionState& acquisition, const Samples& samples,
                   Channels& channels, MessageBoxes& boxes)
        : panel_(panel), acquisition_(acquisition), samples_(samples), channels_(channels),
          boxes_(boxes) {}

    /// The menu entry: without a check mark it takes the means and is checked, with one it takes
    /// both corrections back.
    void cmdcaloofset_Click();

private:
    void correct(std::size_t channel, std::int32_t mean);

    FrontPanel& panel_;
    AcquisitionState& acquisition_;
    const Samples& samples_;
    Channels& channels_;
    MessageBoxes& boxes_;
};

/// The mean that a correction is computed from: `start` and the codes 5 to 505 of `samples` added
/// up and divided by 500, although they are 501; halves to even.
[[nodiscard]] std::int32_t software_offset_mean(const SampleBuffer& samples, std::int32_t start);

} // namespace kv408
