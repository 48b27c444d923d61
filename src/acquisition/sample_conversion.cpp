#include "acquisition/sample_conversion.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace kv408 {

void store_sample(SampleBuffer& samples, const ChannelState& channel, bool inverted,
                  std::size_t index, std::int16_t word) {
    assert(index < samples.mv.size());
    constexpr int full_scale = 4096;
    const int corrected = channel.swoffset + word;
    const auto code = static_cast<std::uint16_t>(
        std::clamp(inverted ? full_scale - corrected : corrected, 0,
                   static_cast<int>(std::numeric_limits<std::uint16_t>::max())));
    samples.raw[index] = code;
    samples.mv[index] = (code - zero_volt_code) * channel.atten * channel.vtfactor;
}

} // namespace kv408
