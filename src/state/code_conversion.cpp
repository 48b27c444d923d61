#include "state/code_conversion.h"

#include <algorithm>
#include <limits>

#include "state/samples.h"

namespace kv408 {

Sample converted(const Conversion& conversion, std::int16_t word) {
    constexpr int full_scale = 4096;
    const int corrected = conversion.swoffset + word;
    const auto code = static_cast<std::uint16_t>(
        std::clamp(conversion.inverted ? full_scale - corrected : corrected, 0,
                   static_cast<int>(std::numeric_limits<std::uint16_t>::max())));
    return {code, (code - zero_volt_code) * conversion.atten * conversion.vtfactor};
}

} // namespace kv408
