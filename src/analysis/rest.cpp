#include "analysis/rest.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/histogram.h"

namespace kv408 {
namespace {

constexpr double noise_part = 0.1;
constexpr int windows_tried = 19; ///< between two crossings, overlapping by half
/// A resting trace is at most this part of the amplitude away from one of its levels.
constexpr double at_level = 0.2;
constexpr double fewest_hits_at_rest = 20.0;

LevelHits hits_of(const DensityHistogram& histogram) {
    const auto statistics = statistics_of(histogram);
    return statistics ? LevelHits{statistics->mean, statistics->sigma, statistics->hits}
                      : LevelHits{};
}

/// `one` and `other` together.
LevelHits together(const LevelHits& one, const LevelHits& other) {
    const double hits = one.hits + other.hits;
    if (!(hits > 0.0)) {
        return one;
    }
    const double mean = (one.hits * one.mean + other.hits * other.mean) / hits;
    const auto squares = [&](const LevelHits& part) {
        const double away = part.mean - mean;
        return part.hits * (part.sigma * part.sigma + away * away);
    };
    return {mean, std::sqrt((squares(one) + squares(other)) / hits), hits};
}

OneAndZero split(const Collected& collected, double level, int first_point, int end_point) {
    const int code =
        std::clamp(static_cast<int>(std::ceil(code_at(collected.with, level))), 0, scale_codes);
    const LevelHits low =
        hits_of(histogram_of(collected, {first_point, end_point, 0, code}, HistogramOf::levels));
    const LevelHits high = hits_of(
        histogram_of(collected, {first_point, end_point, code, scale_codes}, HistogramOf::levels));
    const bool inverted = collected.with.conversion.inverted;
    return inverted ? OneAndZero{.one = low, .zero = high} : OneAndZero{.one = high, .zero = low};
}

/// Mean and spread of the hits of one point.
LevelHits at_point(const Collected& collected, int point) {
    double hits = 0.0;
    double sum = 0.0;
    double squares = 0.0;
    const Density::Codes passed = collected.counts.passed(point);
    const auto counts = collected.counts.at(point);
    for (int code = passed.first; code < passed.end; ++code) {
        const double count = counts[static_cast<std::size_t>(code)];
        const double above = code - passed.first;
        hits += count;
        sum += count * above;
        squares += count * above * above;
    }
    if (!(hits > 0.0)) {
        return {};
    }
    const double mean = sum / hits;
    const double variance = std::max(squares / hits - mean * mean, 0.0);
    return {level_at(collected.with, passed.first + mean),
            std::sqrt(variance) * std::fabs(level_step(collected.with)), hits / collected.weight};
}

/// Where a mean changes least.
struct Flattest {
    double change = 0.0;
    double variance = 0.0;
    double mean = 0.0;
    double hits = 0.0;
};

/// The flattest tenth between `first` and `end` of `points`; none where there are too few points.
std::optional<Flattest> flattest_between(const std::vector<LevelHits>& points, int first, int end) {
    const int size = std::max(4, static_cast<int>(noise_part * (end - first)));
    if (end - first < size) {
        return std::nullopt;
    }
    std::optional<Flattest> best;
    for (int window = 0; window < windows_tried; ++window) {
        const int start = first + (end - first - size) * window / (windows_tried - 1);
        Flattest here;
        double variance = 0.0;
        for (int point = start; point < start + size; ++point) {
            const LevelHits& one = points[static_cast<std::size_t>(point)];
            here.change += point < start + size / 2 ? one.mean : 0.0;
            here.change -= point >= start + size - size / 2 ? one.mean : 0.0;
            here.mean += one.mean / size;
            here.hits += one.hits;
            // Bessel's correction: the mean comes from the same hits.
            variance +=
                one.hits > 1.0 ? one.sigma * one.sigma * one.hits / (one.hits - 1.0) / size : 0.0;
        }
        here.change = std::fabs(here.change);
        here.variance = variance;
        if (!best || here.change < best->change) {
            best = here;
        }
    }
    return best;
}

Told<double> noise_between_edges(const Collected& collected, const TwoLevels& levels,
                                 const Crossings& crossings) {
    std::vector<LevelHits> points;
    points.reserve(static_cast<std::size_t>(collected.counts.points()));
    for (int point = 0; point < collected.counts.points(); ++point) {
        points.push_back(at_point(collected, point));
    }
    double variance = 0.0;
    double hits = 0.0;
    int first = 0;
    for (std::size_t index = 0; index <= crossings.places.size(); ++index) {
        const int end = index < crossings.places.size()
                            ? static_cast<int>(crossings.places[index].point)
                            : collected.counts.points();
        const auto rest = flattest_between(points, first, end);
        first = end + 1;
        if (!rest || rest->hits < fewest_hits_at_rest ||
            std::min(std::fabs(rest->mean - levels.zero), std::fabs(rest->mean - levels.one)) >
                at_level * levels.amplitude()) {
            continue;
        }
        variance += rest->variance * rest->hits;
        hits += rest->hits;
    }
    if (!(hits > 0.0)) {
        return WhyNot::no_rest;
    }
    return std::sqrt(variance / hits);
}

} // namespace

Told<OneAndZero> middle_of_intervals(const Collected& collected, const Crossings& crossings,
                                     double level, double part) {
    if (!crossings.interval || crossings.places.empty()) {
        return WhyNot::no_middle;
    }
    const double interval = *crossings.interval;
    OneAndZero sums;
    double middle = crossings.places.front().point - interval / 2.0;
    for (; middle < collected.counts.points(); middle += interval) {
        const int first = static_cast<int>(std::ceil(middle - part / 2.0 * interval));
        const int end = static_cast<int>(std::ceil(middle + part / 2.0 * interval));
        if (first < 0 || end > collected.counts.points()) {
            continue;
        }
        const OneAndZero here = split(collected, level, first, end);
        sums.one = together(sums.one, here.one);
        sums.zero = together(sums.zero, here.zero);
    }
    if (!(sums.one.hits + sums.zero.hits > 0.0)) {
        return WhyNot::no_middle;
    }
    if (std::min(sums.one.hits, sums.zero.hits) < fewest_hits_at_rest) {
        return WhyNot::few_hits;
    }
    return sums;
}

Told<double> noise_at_rest(const Collected& collected, const TwoLevels& levels,
                           const Crossings& crossings) {
    if (!crossings.interval && !crossings.places.empty() &&
        crossings.places.front().way == Crosses::both) {
        return WhyNot::one_crossing; // where their interval has its middle is not known
    }
    if (!crossings.interval) {
        return noise_between_edges(collected, levels, crossings);
    }
    const auto middle = middle_of_intervals(collected, crossings, levels.middle(), noise_part);
    if (!middle) {
        return middle.why();
    }
    const double one = middle->one.sigma;
    const double zero = middle->zero.sigma;
    return std::sqrt((one * one + zero * zero) / 2.0);
}

} // namespace kv408
