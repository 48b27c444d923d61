#pragma once

#include <cstdint>

#include "state/sweep.h"

namespace kv408 {

/// A sample as the buffers hold it.
struct Sample {
    std::uint16_t code; ///< after correction and inversion
    double mv;          ///< at the input
};

/// The sample that the reply word `word` stands for. A code that the correction or the inversion
/// takes out of the unsigned 16-bit range stops at its end.
[[nodiscard]] Sample converted(const Conversion& conversion, std::int16_t word);

} // namespace kv408
