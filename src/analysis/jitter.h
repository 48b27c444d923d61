#pragma once

#include <optional>
#include <vector>

#include "analysis/collected.h"
#include "analysis/crossing_times.h"
#include "analysis/crossings.h"
#include "analysis/dual_dirac.h"
#include "analysis/told.h"
#include "analysis/two_levels.h"

namespace kv408 {

/// Which edge's jitter is asked for.
struct JitterSetup {
    std::optional<double> level = {}; ///< millivolts; none: half way between the levels
    std::optional<Crosses> way = {};  ///< `rising` or `falling`; none: any
    std::optional<int> number = {}; ///< of the edges of that way from the left, 1 the first; none:
                                    ///< the one nearest to the middle of the screen
    double instrument_ps = 0.0;     ///< jitter of the instrument, to be taken off
    std::optional<double> interval = {}; ///< unit interval of random data, picoseconds; none: found
};

/// Jitter of an edge. Of random data, whose edges rise and fall, that of both.
struct Jitter {
    double level = 0.0; ///< millivolts
    Crosses way = Crosses::rising;
    CrossingTimes times;       ///< its sigma is the rms value of all that moves the crossing
    double peak_to_peak = 0.0; ///< picoseconds
    Told<double> noise = WhyNot::no_rest; ///< of the trace at rest, millivolts rms
    /// What noise makes of it, noise over slope, and the instrument's jitter together, picoseconds;
    /// the instrument's alone where the noise cannot be told.
    double taken_off = 0.0;
    /// The jitter itself, picoseconds rms: the square of `taken_off` is taken off that of sigma.
    Told<double> rms = WhyNot::no_rest;
    /// The dual-Dirac estimate, `taken_off` taken off its random part.
    Told<DualDirac> parts = WhyNot::few_hits;
    /// Unit interval of random data, distance from one edge of its way to the next of others,
    /// picoseconds; none where only one is on the screen.
    std::optional<double> interval = {};
    /// Sweeps after which the rms value deviates by chance by 2 % only once in twenty times.
    double sweeps_wanted = 0.0;
    /// Sweeps after which the random part does so by 10 %, and the deterministic part where it is
    /// at least twice that.
    double parts_wanted = 0.0;
};

/// The jitter of `collected` at the edge that `setup` tells.
[[nodiscard]] Told<Jitter> jitter_of(const Collected& collected, const JitterSetup& setup);

/// The bathtub curve of `jitter` at `places` + 1 times from one crossing to the next, which are
/// its `interval` apart: the bit error ratio by its dual-Dirac parts, with an edge in each second
/// interval of random data and in each of others. None without the parts or the interval.
[[nodiscard]] Told<std::vector<double>> bathtub(const Jitter& jitter, int places);

} // namespace kv408
