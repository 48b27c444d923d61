#include "analysis/data_crossing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

#include "analysis/slice.h"

namespace kv408 {
namespace {

constexpr double wide_reach = 0.2;    ///< of the amplitude: where the parabola is fitted
constexpr double slice_height = 0.1;  ///< of the amplitude, to both sides: the highest slice
constexpr double blur_of_sigma = 0.2; ///< what a slice's height may add to the deviation
constexpr double arm_length = 0.12;   ///< of the amplitude, and of so many points:
constexpr double points_of_an_arm = 8.0;
constexpr double shortest_arm = 0.04;  ///< of the amplitude
constexpr double longest_arms = 0.8;   ///< of the amplitude, about its middle: all arms lie there
constexpr double sigmas_of_an_x = 4.0; ///< within these of its middle arms cannot be told apart
constexpr double band_reach = 0.03;    ///< of the amplitude: about the levels of a duration
constexpr double fewest_hits = 100.0;
constexpr double bin_of_point = 1e-3;

/// Mean and variance of the times of hits.
struct Moments {
    double hits = 0.0;
    double mean = 0.0;
    double variance = 0.0;
};

Moments moments_of(const std::vector<SliceRow>& rows) {
    Moments sums;
    double squares = 0.0;
    for (const SliceRow& row : rows) {
        sums.hits += row.hits;
        sums.mean += row.times;
        squares += row.squares;
    }
    if (sums.hits > 0.0) {
        sums.mean /= sums.hits;
        sums.variance = std::max(squares / sums.hits - sums.mean * sums.mean, 0.0);
    }
    return sums;
}

/// Where the X crosses and how steep it is.
struct Cross {
    double above = 0.0; ///< millivolts above the level that was asked for
    double variance = 0.0;
    double per_level = 0.0; ///< picoseconds per millivolt, without its sign
};

/// The parabola of the variance over the levels: times are taken as squares of the distance from
/// their mean, so that time_of_level() fits it.
std::optional<Cross> cross_of(std::vector<SliceRow> rows, double reach) {
    const auto mean = time_of_level(rows, reach, 1);
    if (!mean) {
        return std::nullopt;
    }
    for (SliceRow& row : rows) {
        const double middle = mean->at(row.above);
        row.times = row.squares - 2.0 * middle * row.times + middle * middle * row.hits;
        row.squares = 0.0;
    }
    const auto parabola = time_of_level(rows, reach, 2);
    if (!parabola || !(parabola->terms[2] > 0.0)) {
        return std::nullopt;
    }
    const auto& terms = parabola->terms;
    const double lowest = -terms[1] / (2.0 * terms[2]);
    return Cross{.above = lowest * reach,
                 .variance = std::max(terms[0] - terms[2] * lowest * lowest, 0.0),
                 .per_level = std::sqrt(terms[2]) / reach};
}

Slice slice_at(const Crossing& place, double level, double low, double high) {
    return {.level = level,
            .low = low,
            .high = high,
            .first_point = place.first_point,
            .end_point = place.end_point,
            .origin = place.point};
}

/// One direction's arms: above the X to the right and below it to the left of it where it rises.
struct Arms {
    Slice above;
    Slice below;
};

Arms arms_of(Slice above, Slice below, double point, bool rising) {
    Arms arms{.above = above, .below = below};
    Slice& right = rising ? arms.above : arms.below;
    Slice& left = rising ? arms.below : arms.above;
    right.first_point = static_cast<int>(std::ceil(point));
    left.end_point = right.first_point;
    return arms;
}

std::optional<TimeOfLevel> fitted(const Collected& collected, const Arms& arms, double reach) {
    std::vector<SliceRow> rows = rows_of(collected, arms.above);
    const std::vector<SliceRow> below = rows_of(collected, arms.below);
    rows.insert(rows.end(), below.begin(), below.end());
    return time_of_level(rows, reach, 3);
}

/// The X measured arm by arm; none where the arms cannot be told apart.
std::optional<DataCrossing> arm_by_arm(const Collected& collected, const TwoLevels& levels,
                                       double level, const Crossing& place, const Cross& cross,
                                       double noise) {
    const double amplitude = levels.amplitude();
    const double inner = sigmas_of_an_x * std::sqrt(cross.variance) / cross.per_level;
    const double points = points_of_an_arm * collected.with.time_per_point / cross.per_level;
    const double outer = inner + std::max(arm_length * amplitude, points);
    const double rest = (1.0 - longest_arms) / 2.0 * amplitude;
    const double high = std::min(cross.above + outer, levels.one - rest - level);
    const double low = std::max(cross.above - outer, levels.zero + rest - level);
    if (std::min(high - cross.above, cross.above - low) - inner < shortest_arm * amplitude) {
        return std::nullopt;
    }
    const Slice above = slice_at(place, level, cross.above + inner, high);
    const Slice below = slice_at(place, level, low, cross.above - inner);
    const Arms rising = arms_of(above, below, place.point, true);
    const Arms falling = arms_of(above, below, place.point, false);
    const auto rise = fitted(collected, rising, outer);
    const auto fall = fitted(collected, falling, outer);
    if (!rise || !fall || !(rise->per_level() > 0.0) || !(fall->per_level() < 0.0)) {
        return std::nullopt;
    }
    DataCrossing found;
    found.falls_later = fall->at(0.0) - rise->at(0.0);
    const double steepness = rise->per_level() - fall->per_level();
    const double cross_above = found.falls_later / steepness;
    const double origin = time_of(collected.with, place.point);
    found.time = origin + rise->at(cross_above);
    found.level = level + cross_above;
    found.slope = 2.0 / steepness;
    found.hits = (rise->hits + fall->hits) / collected.weight;
    const auto mean = [&](double of_rise, double of_fall) {
        return (of_rise * rise->hits + of_fall * fall->hits) / (rise->hits + fall->hits);
    };
    const double variance = mean(rise->variance, fall->variance);
    const double bend = std::clamp(mean(rise->bend(noise), fall->bend(noise)), 0.0, variance);
    found.sigma = std::sqrt(variance - bend);
    found.times.blur = std::sqrt(bend);
    found.times.mean = origin + (rise->at(0.0) + fall->at(0.0)) / 2.0;
    found.times.sigma = std::hypot(found.sigma, found.falls_later / 2.0);
    found.times.hits = found.hits;
    found.times.slope = found.slope;
    found.times.times = times_about(found.times.mean, found.times.sigma,
                                    bin_of_point * collected.with.time_per_point);
    for (const Slice& arm : {rising.above, rising.below}) {
        add_crossings(collected, arm, *rise, found.times.times);
    }
    for (const Slice& arm : {falling.above, falling.below}) {
        add_crossings(collected, arm, *fall, found.times.times);
    }
    return found;
}

/// The hits of a slice of levels about `above`; its height spreads their times by `blur`.
struct Layer {
    Slice slice;
    double blur = 0.0; ///< picoseconds
    Moments moments;   ///< of the times, the blur taken off
};

Layer layer_at(const Collected& collected, double amplitude, double level, const Crossing& place,
               const Cross& cross, double above) {
    const double sigma = std::sqrt(cross.variance);
    const double step = std::fabs(level_step(collected.with));
    const double reach = std::clamp(std::sqrt(3.0) * blur_of_sigma * sigma / cross.per_level,
                                    2.0 * step, std::max(2.0 * step, slice_height * amplitude));
    Layer layer;
    layer.slice = slice_at(place, level, above - reach, above + reach);
    layer.blur = reach * cross.per_level / std::sqrt(3.0);
    layer.moments = moments_of(rows_of(collected, layer.slice));
    layer.moments.variance = std::max(layer.moments.variance - layer.blur * layer.blur, 0.0);
    return layer;
}

DensityHistogram times_by_point(const Collected& collected, const Slice& slice) {
    const double first = code_at(collected.with, slice.level + slice.low);
    const double end = code_at(collected.with, slice.level + slice.high);
    return histogram_of(collected,
                        {.first_point = slice.first_point,
                         .end_point = slice.end_point,
                         .first_code = static_cast<int>(std::ceil(std::min(first, end))),
                         .end_code = static_cast<int>(std::ceil(std::max(first, end)))},
                        HistogramOf::times);
}

DataCrossing layer_by_layer(const Collected& collected, double amplitude, double level,
                            const Crossing& place, const Cross& cross) {
    const Layer at_cross = layer_at(collected, amplitude, level, place, cross, cross.above);
    const Layer at_level = layer_at(collected, amplitude, level, place, cross, 0.0);
    const double origin = time_of(collected.with, place.point);
    DataCrossing found;
    found.time = origin + at_cross.moments.mean;
    found.level = level + cross.above;
    found.sigma = std::sqrt(at_cross.moments.variance);
    found.slope = 1.0 / cross.per_level;
    found.falls_later = 2.0 * cross.above * cross.per_level;
    found.hits = at_cross.moments.hits / collected.weight;
    found.times.times = times_by_point(collected, at_level.slice);
    found.times.mean = origin + at_level.moments.mean;
    found.times.sigma = std::sqrt(at_level.moments.variance);
    found.times.hits = at_level.moments.hits / collected.weight;
    found.times.slope = found.slope;
    found.times.blur = at_level.blur;
    return found;
}

} // namespace

Told<DataCrossing> data_crossing(const Collected& collected, const TwoLevels& levels, double level,
                                 const Crossing& place, double noise) {
    const double reach =
        std::min({wide_reach * levels.amplitude(), level - levels.zero, levels.one - level});
    if (reach < band_reach * levels.amplitude()) {
        return WhyNot::no_crossing;
    }
    const auto rows = rows_of(collected, slice_at(place, level, -reach, reach));
    const Moments all = moments_of(rows);
    if (all.hits / collected.weight < fewest_hits) {
        return WhyNot::few_hits;
    }
    const auto cross = cross_of(rows, reach);
    if (!cross) {
        return WhyNot::few_hits;
    }
    if (std::fabs(cross->above) > reach) {
        return WhyNot::no_crossing;
    }
    if (2.0 * reach * cross->per_level < 2.0 * collected.with.time_per_point) {
        return WhyNot::points_apart;
    }
    auto found = arm_by_arm(collected, levels, level, place, *cross, noise);
    if (!found) {
        found = layer_by_layer(collected, levels.amplitude(), level, place, *cross);
    }
    found->times.sweeps = static_cast<double>(collected.sweeps);
    return *found;
}

Told<EdgeDurations> edge_durations(const Collected& collected, const TwoLevels& levels,
                                   const Crossing& place, const DataCrossing& crossing,
                                   double part) {
    const double amplitude = levels.amplitude();
    const double reach = band_reach * amplitude;
    const auto at = [&](double level) {
        Moments moments = moments_of(rows_of(collected, slice_at(place, level, -reach, reach)));
        // The mean square of the distance of the arms from the middle over the band.
        moments.variance -= crossing.sigma * crossing.sigma +
                            reach * reach / (3.0 * crossing.slope * crossing.slope);
        return moments;
    };
    const double low_level = levels.zero + part * amplitude;
    const double high_level = levels.one - part * amplitude;
    const Moments low = at(low_level);
    const Moments high = at(high_level);
    if (std::min(low.hits, high.hits) / collected.weight < fewest_hits) {
        return WhyNot::few_hits;
    }
    if (!(low.variance > 0.0) || !(high.variance > 0.0)) {
        return WhyNot::only_noise;
    }
    if (std::sqrt(std::min(low.variance, high.variance)) > sigmas_of_an_x * crossing.sigma) {
        // The arms are apart: what lies to the right of the X at the upper level has risen.
        const double x =
            (crossing.time - collected.with.first_time) / collected.with.time_per_point;
        const auto arm = [&](double level, bool right) {
            Slice slice = slice_at(place, level, -reach, reach);
            (right ? slice.first_point : slice.end_point) = static_cast<int>(std::ceil(x));
            return moments_of(rows_of(collected, slice)).mean;
        };
        return EdgeDurations{.rise = arm(high_level, true) - arm(low_level, false),
                             .fall = arm(low_level, true) - arm(high_level, false)};
    }
    const double both = std::sqrt(low.variance) + std::sqrt(high.variance);
    const double difference = high.mean - low.mean;
    return EdgeDurations{.rise = both + difference, .fall = both - difference};
}

} // namespace kv408
