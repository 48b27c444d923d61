#pragma once

#include <optional>
#include <span>
#include <vector>

#include "analysis/told.h"

namespace kv408 {

/// Where hits gather: at places that are the same distance apart. All in points.
struct Repetition {
    std::optional<double> interval; ///< from one place to the next; none for one place
    std::vector<double> places;     ///< the mean place of each whole gathering, at least one
};

/// Where `hits`, by point, gather: `interval` apart, or, where none is given, the longest interval
/// up to three quarters of all points with whose first harmonic they agree. What gathers only once
/// gives its mean place, without an interval. What gathers nowhere tells that the eye is closed.
[[nodiscard]] Told<Repetition> repetition_of(std::span<const double> hits,
                                             std::optional<double> interval);

} // namespace kv408
