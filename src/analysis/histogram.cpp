#include "analysis/histogram.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace kv408 {
namespace {

/// A factor: a hit that is beyond a limit by rounding alone counts as within it.
constexpr double rounding_room = 1.0 + 1e-9;

DensityWindow inside(const DensityWindow& window, int points) {
    DensityWindow kept;
    kept.first_point = std::clamp(window.first_point, 0, points);
    kept.end_point = std::clamp(window.end_point, kept.first_point, points);
    kept.first_code = std::clamp(window.first_code, 0, scale_codes);
    kept.end_code = std::clamp(window.end_code, kept.first_code, scale_codes);
    return kept;
}

/// Sums of counters, before they are divided by the weight.
struct Sums {
    std::vector<std::uint64_t> bins;
    std::uint64_t clipped = 0;
};

Sums sums_of(const Density& density, const DensityWindow& window, HistogramOf of) {
    const bool levels = of == HistogramOf::levels;
    Sums sums;
    sums.bins.resize(static_cast<std::size_t>(levels ? window.end_code - window.first_code
                                                     : window.end_point - window.first_point));
    for (int point = window.first_point; point < window.end_point; ++point) {
        const Density::Codes passed = density.passed(point);
        const int first = std::max(passed.first, window.first_code);
        const int end = std::min(passed.end, window.end_code);
        if (first >= end) {
            continue;
        }
        const auto counts = density.at(point).subspan(static_cast<std::size_t>(first),
                                                      static_cast<std::size_t>(end - first));
        if (levels) {
            auto bin = sums.bins.begin() + (first - window.first_code);
            std::transform(counts.begin(), counts.end(), bin, bin,
                           [](std::uint32_t count, std::uint64_t sum) { return sum + count; });
        } else {
            sums.bins[static_cast<std::size_t>(point - window.first_point)] =
                std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
        }
        sums.clipped += first == 0 ? counts.front() : 0U;
        sums.clipped += end == scale_codes ? counts.back() : 0U;
    }
    return sums;
}

/// Bin of the hit in the middle, or between those of the two in the middle.
double middle_bin(const std::vector<double>& hits, double all) {
    double until = 0.0;
    for (std::size_t bin = 0; bin < hits.size(); ++bin) {
        until += hits[bin];
        if (until > all / 2.0) {
            return static_cast<double>(bin);
        }
        if (until == all / 2.0 && hits[bin] > 0.0) {
            std::size_t next = bin + 1;
            while (next < hits.size() && hits[next] == 0.0) {
                ++next;
            }
            return static_cast<double>(bin + next) / 2.0;
        }
    }
    return 0.0;
}

/// The share of `all` hits within `sigmas` bins of the bin `mean`.
double share_within(const std::vector<double>& hits, double all, double mean, double sigmas) {
    double within = 0.0;
    for (std::size_t bin = 0; bin < hits.size(); ++bin) {
        if (std::fabs(static_cast<double>(bin) - mean) <= sigmas * rounding_room) {
            within += hits[bin];
        }
    }
    return within / all;
}

} // namespace

DensityHistogram histogram_of(const Collected& collected, const DensityWindow& window,
                              HistogramOf of) {
    const DensityWindow kept = inside(window, collected.counts.points());
    const Sums sums = sums_of(collected.counts, kept, of);
    DensityHistogram histogram;
    histogram.of = of;
    histogram.hits.reserve(sums.bins.size());
    for (const std::uint64_t sum : sums.bins) {
        histogram.hits.push_back(static_cast<double>(sum) / collected.weight);
    }
    histogram.clipped = static_cast<double>(sums.clipped) / collected.weight;
    if (of == HistogramOf::times) {
        histogram.first = time_of(collected.with, kept.first_point);
        histogram.step = collected.with.time_per_point;
        return histogram;
    }
    histogram.first = level_at(collected.with, kept.first_code);
    histogram.step = level_step(collected.with);
    if (histogram.step < 0.0) {
        std::reverse(histogram.hits.begin(), histogram.hits.end());
        histogram.first = level_at(collected.with, kept.end_code - 1);
        histogram.step = -histogram.step;
    }
    return histogram;
}

std::optional<HistogramStatistics> statistics_of(const DensityHistogram& histogram) {
    const std::vector<double>& hits = histogram.hits;
    const double all = std::accumulate(hits.begin(), hits.end(), 0.0);
    if (!(all > 0.0)) {
        return std::nullopt;
    }
    double mean = 0.0;
    std::size_t lowest = hits.size();
    std::size_t highest = 0;
    for (std::size_t bin = 0; bin < hits.size(); ++bin) {
        if (hits[bin] > 0.0) {
            mean += hits[bin] * static_cast<double>(bin) / all;
            lowest = std::min(lowest, bin);
            highest = bin;
        }
    }
    double squares = 0.0;
    for (std::size_t bin = lowest; bin <= highest; ++bin) {
        const double away = static_cast<double>(bin) - mean;
        squares += hits[bin] * away * away;
    }
    // A mean that is off by rounding is no deviation.
    const double sigma = lowest == highest ? 0.0 : std::sqrt(squares / all);
    const auto mode = std::max_element(hits.begin(), hits.end()) - hits.begin();
    HistogramStatistics found;
    found.hits = all;
    found.mean = histogram.value_of(mean);
    found.median = histogram.value_of(middle_bin(hits, all));
    found.mode = histogram.value_of(static_cast<double>(mode));
    found.sigma = sigma * histogram.step;
    found.lowest = histogram.value_of(static_cast<double>(lowest));
    found.highest = histogram.value_of(static_cast<double>(highest));
    found.peak_to_peak = found.highest - found.lowest;
    if (lowest == highest) {
        found.within_1 = found.within_2 = found.within_3 = 1.0;
        return found;
    }
    found.within_1 = share_within(hits, all, mean, sigma);
    found.within_2 = share_within(hits, all, mean, 2.0 * sigma);
    found.within_3 = share_within(hits, all, mean, 3.0 * sigma);
    return found;
}

} // namespace kv408
