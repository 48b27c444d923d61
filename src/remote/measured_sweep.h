#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "maths/maths_trace.h"
#include "state/measurement_state.h"
#include "state/sweep.h"

namespace kv408 {

/// A whole sweep, and what the program measured and computed of it.
struct MeasuredSweep {
    std::shared_ptr<const Sweep> sweep;         ///< complete; never null
    std::uint64_t number = 0;                   ///< of all that clients count
    bool measured = false;                      ///< measuring was on when it came
    std::array<MeasurementRecord, 2> results{}; ///< by channel, where it was
    /// MATH1 and MATH2 as they were when it came; null where there was none.
    std::array<std::shared_ptr<const MathsTrace>, 2> maths{};
};

} // namespace kv408
