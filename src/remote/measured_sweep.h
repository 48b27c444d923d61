#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "state/measurement_state.h"
#include "state/sweep.h"

namespace kv408 {

/// A whole sweep, and what the program measured of it.
struct MeasuredSweep {
    std::shared_ptr<const Sweep> sweep;         ///< complete; never null
    std::uint64_t number = 0;                   ///< of all that clients count
    bool measured = false;                      ///< measuring was on when it came
    std::array<MeasurementRecord, 2> results{}; ///< by channel, where it was
};

} // namespace kv408
