#pragma once

#include "analysis/collected.h"
#include "analysis/crossings.h"
#include "analysis/told.h"
#include "analysis/two_levels.h"

namespace kv408 {

/// Hits about one level.
struct LevelHits {
    double mean = 0.0;  ///< millivolts
    double sigma = 0.0; ///< standard deviation, millivolts
    double hits = 0.0;
};

/// The hits above and below a level.
struct OneAndZero {
    LevelHits one;
    LevelHits zero;
};

/// The hits above and below `level`, millivolts, in the middle `part` of each interval of the
/// random data `crossings`. Only middles that lie on the screen as a whole count.
[[nodiscard]] Told<OneAndZero> middle_of_intervals(const Collected& collected,
                                                   const Crossings& crossings, double level,
                                                   double part);

/// The noise of a trace: its standard deviation, millivolts. For random data that about the two
/// levels in the middle tenth of the interval. For others the spread of the points about their own
/// mean, where the mean changes least between two crossings, over a tenth of their distance: while
/// the trace rests, jitter adds nothing.
[[nodiscard]] Told<double> noise_at_rest(const Collected& collected, const TwoLevels& levels,
                                         const Crossings& crossings);

} // namespace kv408
