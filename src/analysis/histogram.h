#pragma once

#include <optional>
#include <vector>

#include "analysis/collected.h"

namespace kv408 {

/// A rectangle of a density: points and codes from the first to, not including, the end. A part of
/// it outside the density holds no hits.
struct DensityWindow {
    int first_point = 0;
    int end_point = 0;
    int first_code = 0;
    int end_code = scale_codes;

    friend bool operator==(const DensityWindow&, const DensityWindow&) = default;
};

/// What a histogram counts.
enum class HistogramOf {
    levels, ///< how often each level was hit: a bin for each code, in millivolts
    times,  ///< how often each time was hit: a bin for each point, in picoseconds
};

/// How many hits of a window fell on each of its levels or times.
struct DensityHistogram {
    HistogramOf of = HistogramOf::levels;
    std::vector<double> hits; ///< by bin; bins of higher values come later
    double first = 0.0;       ///< value of the first bin, millivolts or picoseconds
    double step = 1.0;        ///< from one bin to the next, above 0
    double clipped = 0.0;     ///< number of those hits that lie at an end of the instrument's scale

    /// The value that bin `bin` stands for; fractions lie between bins.
    [[nodiscard]] double value_of(double bin) const { return first + bin * step; }
};

/// The histogram of the hits of `collected` in `window`. With an inverted channel its first bin is
/// the window's highest code.
[[nodiscard]] DensityHistogram histogram_of(const Collected& collected, const DensityWindow& window,
                                            HistogramOf of);

/// Statistics of the hits of a histogram; values in its unit.
struct HistogramStatistics {
    double hits = 0.0;
    double mean = 0.0;
    double median = 0.0; ///< with two hits in the middle their mean
    double mode = 0.0;   ///< of the bin with the most hits; of several the lowest
    double sigma = 0.0; ///< standard deviation: the root of the mean squared distance from the mean
    double lowest = 0.0;
    double highest = 0.0;
    double peak_to_peak = 0.0;
    /// The share of the hits that lie within 1, 2 and 3 sigma of the mean, 0..1.
    double within_1 = 0.0;
    double within_2 = 0.0;
    double within_3 = 0.0;
};

/// The statistics of `histogram`; none where nothing was hit. With one hit sigma is 0.
[[nodiscard]] std::optional<HistogramStatistics> statistics_of(const DensityHistogram& histogram);

} // namespace kv408
