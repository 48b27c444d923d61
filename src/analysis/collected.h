#pragma once

#include <cstdint>
#include <memory>

#include "analysis/density.h"
#include "analysis/measured_with.h"

namespace kv408 {

/// What has been collected of one channel.
struct Collected {
    Density counts;
    MeasuredWith with;
    std::uint64_t sweeps = 0;   ///< that were counted
    std::uint64_t averaged = 0; ///< those of them with "Filter Avg."
    /// By how much a new hit raises its counter: 1, or more while older hits fade out. A counter
    /// divided by this is a number of hits.
    double weight = 1.0;
};

} // namespace kv408
