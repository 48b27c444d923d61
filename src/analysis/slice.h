#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "analysis/collected.h"
#include "analysis/histogram.h"

namespace kv408 {

/// A part of a density beside a crossing: levels from `low` to `high`, millivolts above the
/// crossed level, and points from the first to, not including, the end.
struct Slice {
    double level = 0.0; ///< the crossed one, millivolts
    double low = 0.0;
    double high = 0.0;
    int first_point = 0;
    int end_point = 0;
    double origin = 0.0; ///< the point from which times count
};

/// The hits of one code in a slice.
struct SliceRow {
    double above = 0.0;   ///< the crossed level, millivolts
    double hits = 0.0;    ///< counters, not divided by the weight
    double times = 0.0;   ///< sum of their times after the origin, picoseconds
    double squares = 0.0; ///< sum of the squares of these
};

/// The hits of `slice` by code.
[[nodiscard]] std::vector<SliceRow> rows_of(const Collected& collected, const Slice& slice);

/// The mean time of hits as a polynomial of their level.
struct TimeOfLevel {
    std::array<double, 4> terms{}; ///< of (level above the crossed one / reach) to 0, 1, 2, 3
    double reach = 1.0;            ///< millivolts
    double variance = 0.0;         ///< of the times about it, picoseconds squared
    double hits = 0.0;             ///< it was fitted to, counters
    double square_slope = 0.0;     ///< mean of (picoseconds per millivolt) squared over these hits

    /// Picoseconds after the origin, `above` millivolts above the crossed level.
    [[nodiscard]] double at(double above) const {
        const double x = above / reach;
        return ((terms[3] * x + terms[2]) * x + terms[1]) * x + terms[0];
    }
    /// Picoseconds per millivolt at the crossed level.
    [[nodiscard]] double per_level() const { return terms[1] / reach; }
    /// By how much more of `variance` is due to noise of `noise` millivolts than there would be at
    /// the crossed level, because edges bend: picoseconds squared.
    [[nodiscard]] double bend(double noise) const {
        return noise * noise * (square_slope - per_level() * per_level());
    }
};

/// The least-squares fit of `degree` 1 to 3 to `rows`, at most `reach` above or below the crossed
/// level; none where the hits do not determine it.
[[nodiscard]] std::optional<TimeOfLevel> time_of_level(std::span<const SliceRow> rows, double reach,
                                                       int degree);

/// Adds to `times`, in picoseconds after the trigger, when the hits of `slice` cross the level as
/// `edge` moves them there. What lies outside its bins goes into the outermost one.
void add_crossings(const Collected& collected, const Slice& slice, const TimeOfLevel& edge,
                   DensityHistogram& times);

/// An empty histogram for times about `mean`, picoseconds after the trigger, that deviate by
/// `sigma`: of bins of a sixteenth of that, but at least of `least`, to ten of it on both sides.
[[nodiscard]] DensityHistogram times_about(double mean, double sigma, double least);

} // namespace kv408
