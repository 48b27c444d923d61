#pragma once

#include "analysis/histogram.h"
#include "analysis/told.h"

namespace kv408 {

/// The bit error ratio for which total jitter is told.
inline constexpr double told_error_ratio = 1e-12;

/// An estimate of jitter as two sharp lines, half of the hits each, spread by the same random
/// jitter: the dual-Dirac model of INCITS TR-35-2004 (MJSQ), which holds in the tails.
struct DualDirac {
    double random = 0.0;        ///< standard deviation of the random part, in the histogram's unit
    double deterministic = 0.0; ///< distance of the two lines, 0..
    double left = 0.0;          ///< the earlier line
    double right = 0.0;
    double tail_hits = 0.0; ///< number of hits in both tails, from which it was found

    /// Total jitter at the bit error ratio `ratio`: deterministic + 2 Q random, Q being how many
    /// deviations of a normal distribution leave that share beyond them; 7.03 for 1e-12.
    [[nodiscard]] double total(double ratio) const;
};

/// Fits the model to the tails of `times`: on each side to the bins beyond which at most a tenth of
/// the hits lie. There twice the share beyond a time, expressed as deviations of a normal
/// distribution (the Q scale), is a straight line over time: its slope gives the random part, its
/// zero the line of that side. What the line of the other side adds is subtracted, again and again
/// until nothing changes.
[[nodiscard]] Told<DualDirac> dual_dirac(const DensityHistogram& times);

/// `model` without a spread that is known, such as that of noise: the square of `spread` is
/// subtracted from that of the random part. None where it is larger.
[[nodiscard]] Told<DualDirac> without_spread(DualDirac model, double spread);

/// The bit error ratio of a receiver that decides `time` after the mean of the crossings, and
/// `interval` before that of the next, both of which deviate as `model`, whose lines are about
/// `mean`: MJSQ's bathtub curve, with an edge in the share `edges` of all intervals.
[[nodiscard]] double bit_error_ratio(const DualDirac& model, double mean, double time,
                                     double interval, double edges);

} // namespace kv408
