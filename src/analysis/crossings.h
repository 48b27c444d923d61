#pragma once

#include <optional>
#include <vector>

#include "analysis/collected.h"
#include "analysis/told.h"
#include "analysis/two_levels.h"

namespace kv408 {

/// Which way a trace crosses a level.
enum class Crosses {
    rising,
    falling,
    both ///< some sweeps rise there and some fall, as random data do
};

/// A place at which the trace crosses a level.
struct Crossing {
    double point = 0.0; ///< where on the average; fractions lie between points
    Crosses way = Crosses::rising;
    /// The points that belong to this crossing and to none beside it: to, not including, the end.
    int first_point = 0;
    int end_point = 0;
};

/// All places at which a trace crosses a level.
struct Crossings {
    std::vector<Crossing> places; ///< from left to right, at least one
    /// Of random data the unit interval in points: found, or as given; none where they cross only
    /// once on the screen.
    std::optional<double> interval;
};

/// The crossings of `level`, millivolts, by a trace that goes between `levels`. It is random data
/// where at most points some sweeps are above and some below the level; their crossings repeat in
/// the unit interval, which is found as the longest with which the hits about the level repeat, and
/// then from the mean places of the crossings, or is `given_interval`, picoseconds.
[[nodiscard]] Told<Crossings> crossings_of(const Collected& collected, const TwoLevels& levels,
                                           double level,
                                           std::optional<double> given_interval = std::nullopt);

/// The crossings of random data that are known to lie `interval` apart, one of them at `time`, both
/// in picoseconds: those of which a quarter of an interval to both sides is on the screen.
[[nodiscard]] Told<Crossings> crossings_at(const Collected& collected, double time,
                                           double interval);

} // namespace kv408
