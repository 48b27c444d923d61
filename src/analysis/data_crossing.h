#pragma once

#include "analysis/collected.h"
#include "analysis/crossing_times.h"
#include "analysis/crossings.h"
#include "analysis/told.h"
#include "analysis/two_levels.h"

namespace kv408 {

/// A crossing of random data, where rising and falling edges make an X.
///
/// The spread of the crossing times grows with the distance from the level at which the X crosses:
/// variance(level) = sigma^2 + ((level - crossing level) / slope)^2, for there are as many rising
/// as falling edges. From a parabola through it come all of these, however much jitter there is.
/// Where jitter is small beside the edges, the four arms of the X are measured one by one instead.
struct DataCrossing {
    double time = 0.0;  ///< of the X, picoseconds after the trigger
    double level = 0.0; ///< at which the X crosses, millivolts
    double sigma = 0.0; ///< of the crossing times at that level, picoseconds
    double slope = 0.0; ///< of an edge, without its sign, millivolts per picosecond
    /// At the level that was asked for, how much later edges fall than rise, picoseconds.
    double falls_later = 0.0;
    double hits = 0.0;   ///< number of hits that `sigma` was found from
    CrossingTimes times; ///< when edges of both directions cross the level that was asked for
};

/// The crossing of `level`, millivolts, of random data at `place`. `noise` is that of the trace,
/// millivolts rms, 0 where it is not known.
[[nodiscard]] Told<DataCrossing> data_crossing(const Collected& collected, const TwoLevels& levels,
                                               double level, const Crossing& place, double noise);

/// How long edges of random data take from one level to another, picoseconds.
struct EdgeDurations {
    double rise = 0.0;
    double fall = 0.0;
};

/// How long the edges at `place`, which cross as `crossing`, take between the levels `part` above
/// `levels.zero` and below `levels.one`, of the amplitude: 0.2 for 20 % to 80 %. From the mean
/// times of the four arms; where jitter does not let them be told apart, from mean and variance of
/// all times at both levels, for as many edges rise as fall.
[[nodiscard]] Told<EdgeDurations> edge_durations(const Collected& collected,
                                                 const TwoLevels& levels, const Crossing& place,
                                                 const DataCrossing& crossing, double part);

} // namespace kv408
