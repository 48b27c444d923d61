#pragma once

#include "panel/surroundings.h"
#include "state/samples.h"

namespace kv408 {

/// "Software Calibrate Offset": a code correction of each channel that takes the present mean for
/// 0 V. The calibration record has no part in it.
class SoftwareOffset {
public:
    SoftwareOffset(const Surroundings& around, const Samples& samples)
        : around_(around), samples_(samples) {}

    /// The menu entry: without a check mark it takes the means and is checked, with one it takes
    /// both corrections back.
    void cmdcaloofset_Click();

private:
    void correct(Channel channel, std::int32_t mean);

    Surroundings around_;
    const Samples& samples_;
};

/// The mean that a correction is computed from: `start` and the codes 5 to 505 of `samples` added
/// up and divided by 500, although they are 501; halves to even.
[[nodiscard]] std::int32_t software_offset_mean(const SampleBuffer& samples, std::int32_t start);

} // namespace kv408
