#pragma once

#include "analysis/collected.h"
#include "analysis/told.h"

namespace kv408 {

/// The two levels between which a trace goes, millivolts.
struct TwoLevels {
    double zero = 0.0;    ///< the lower one
    double one = 0.0;     ///< the upper one
    bool clipped = false; ///< more than one hit in a thousand lies at an end of the scale

    [[nodiscard]] double amplitude() const { return one - zero; }
    [[nodiscard]] double middle() const { return (one + zero) / 2.0; }
};

/// The levels that the trace takes most often in the lower and in the upper half of its range, as
/// IEEE Std 181-2011 finds states in a histogram. For that every fourth point is enough.
[[nodiscard]] Told<TwoLevels> two_levels(const Collected& collected);

} // namespace kv408
