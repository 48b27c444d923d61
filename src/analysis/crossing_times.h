#pragma once

#include <span>

#include "analysis/collected.h"
#include "analysis/crossings.h"
#include "analysis/histogram.h"
#include "analysis/told.h"
#include "analysis/two_levels.h"

namespace kv408 {

/// When sweeps cross a level, from the hits in a slice of levels about it.
///
/// A hit beside the level is moved onto it along its edge: of the hits in the slice, time is fitted
/// as a cubic of the level, and what remains of each hit's time is when its sweep crosses the
/// level. Which hits lie in the slice does not depend on that time, so mean and deviation are not
/// falsified, and many points count instead of the few at the level.
struct CrossingTimes {
    DensityHistogram times; ///< by time
    double mean = 0.0;      ///< picoseconds after the trigger
    double sigma = 0.0;     ///< standard deviation, picoseconds
    double hits = 0.0;      ///< number of hits in `times`
    double sweeps = 0.0;    ///< number of sweeps that these come from: the hits of one point
    double slope = 0.0; ///< of an edge at the level, without its sign, millivolts per picosecond
    /// The slice spreads `times` by this standard deviation, picoseconds: by its height where hits
    /// are not moved along their edge, and because noise counts more where edges bend. `sigma` is
    /// without it.
    double blur = 0.0;
};

/// When sweeps cross `level`, millivolts, at `place`, which all cross there in its direction. The
/// slice reaches a tenth of the amplitude to both sides, and as far as three tenths where that
/// takes in fewer than four points of an edge. `noise` is that of the trace, millivolts rms, 0
/// where it is not known.
[[nodiscard]] Told<CrossingTimes> edge_times(const Collected& collected, const TwoLevels& levels,
                                             double level, const Crossing& place, double noise);

} // namespace kv408
