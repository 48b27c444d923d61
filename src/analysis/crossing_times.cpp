#include "analysis/crossing_times.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "analysis/slice.h"

namespace kv408 {
namespace {

constexpr double slice_reach = 0.1;  ///< of the amplitude, to both sides
constexpr double widest_reach = 0.3; ///< of the amplitude
constexpr double nearest_level =
    0.1; ///< that the slice keeps from the two levels, of the amplitude
constexpr double wanted_points = 4.0; ///< of an edge in the slice
constexpr double least_points = 1.5;
constexpr double points_for_cubic = 3.9;
constexpr double points_that_blend = 12.0;
constexpr double least_hits = 20.0;
/// Bins of crossing times are at least this part of the distance between points.
constexpr double finest_bin = 1e-3;

Slice slice_about(const Crossing& place, double level, double reach) {
    return {.level = level,
            .low = -reach,
            .high = reach,
            .first_point = place.first_point,
            .end_point = place.end_point,
            .origin = place.point};
}

/// How long an edge takes to go through a slice of `reach` to both sides, points.
double points_in(const Collected& collected, const TimeOfLevel& edge, double reach) {
    return 2.0 * reach * std::fabs(edge.per_level()) / collected.with.time_per_point;
}

double hits_at(const Collected& collected, double point) {
    const auto nearest =
        std::clamp(static_cast<int>(std::lround(point)), 0, collected.counts.points() - 1);
    const auto counts = collected.counts.at(nearest);
    const auto sum = std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
    return static_cast<double>(sum) / collected.weight;
}

} // namespace

Told<CrossingTimes> edge_times(const Collected& collected, const TwoLevels& levels, double level,
                               const Crossing& place, double noise) {
    const double room =
        std::min(level - levels.zero, levels.one - level) - nearest_level * levels.amplitude();
    if (room <= 0.0) {
        return WhyNot::no_crossing;
    }
    double reach = std::min(slice_reach * levels.amplitude(), room);
    Slice slice = slice_about(place, level, reach);
    auto edge = time_of_level(rows_of(collected, slice), reach, 1);
    // A slice without two points of an edge says nothing about how long the edge takes.
    const double points = edge ? points_in(collected, *edge, reach) : 0.0;
    if (points < wanted_points) {
        reach = std::min(widest_reach * levels.amplitude(), room);
        if (points >= least_points) {
            reach = std::min(reach, slice.high * wanted_points / points);
        }
        slice = slice_about(place, level, reach);
        edge = time_of_level(rows_of(collected, slice), reach, 1);
    }
    if (!edge || points_in(collected, *edge, reach) < least_points) {
        return WhyNot::points_apart;
    }
    if (edge->hits / collected.weight < least_hits) {
        return WhyNot::few_hits;
    }
    // In its middle a cubic's slope has two and a half times the standard error of a line's.
    const double slope = 1.0 / std::fabs(edge->per_level());
    const int degree = points_in(collected, *edge, reach) >= points_for_cubic ? 3 : 1;
    if (const auto bent = time_of_level(rows_of(collected, slice), reach, degree)) {
        // A slice of a whole number of points cuts as much at its one end as at the other.
        const double passed =
            std::fabs(bent->at(reach) - bent->at(-reach)) / collected.with.time_per_point;
        if (passed >= least_points && passed < points_that_blend) {
            reach *= std::max(std::floor(passed), least_points) / passed;
            slice = slice_about(place, level, reach);
        }
        const auto whole = time_of_level(rows_of(collected, slice), reach, degree);
        edge = whole ? whole : bent;
    }
    CrossingTimes found;
    found.mean = time_of(collected.with, place.point) + edge->at(0.0);
    found.blur = std::sqrt(std::clamp(edge->bend(noise), 0.0, edge->variance));
    found.sigma = std::sqrt(edge->variance - found.blur * found.blur);
    found.hits = edge->hits / collected.weight;
    found.sweeps = hits_at(collected, place.point);
    found.slope = slope;
    found.times = times_about(found.mean, found.sigma, finest_bin * collected.with.time_per_point);
    add_crossings(collected, slice, *edge, found.times);
    return found;
}

} // namespace kv408
