#include "analysis/mask.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

namespace kv408 {
namespace {

constexpr double least_margin = -1.0;
constexpr double most_margin = 8.0;
constexpr double margin_step = 1e-3;
/// A polygon has the trace on both sides where at least this share of the hits is on the lesser.
constexpr double share_of_a_side = 0.1;

struct Bounds {
    double left = 0.0;
    double right = 0.0;
    double low = 0.0;
    double high = 0.0;
};

Bounds bounds_of(const MaskPolygon& polygon) {
    Bounds bounds{polygon.points.front().x, polygon.points.front().x, polygon.points.front().y,
                  polygon.points.front().y};
    for (const MaskPoint& point : polygon.points) {
        bounds = {std::min(bounds.left, point.x), std::max(bounds.right, point.x),
                  std::min(bounds.low, point.y), std::max(bounds.high, point.y)};
    }
    return bounds;
}

int first_from(double place, int end) {
    return static_cast<int>(std::clamp(std::ceil(place), 0.0, static_cast<double>(end)));
}

/// Calls `what(point, first code, end code)` for the codes of each point inside `polygon`.
template <typename What>
void for_each_inside(const MaskPolygon& polygon, int points, What what) {
    const Bounds bounds = bounds_of(polygon);
    std::vector<double> edges;
    for (int point = first_from(bounds.left, points); point < points && point <= bounds.right;
         ++point) {
        edges.clear();
        const double x = point;
        for (std::size_t corner = 0; corner < polygon.points.size(); ++corner) {
            const MaskPoint& one = polygon.points[corner];
            const MaskPoint& next = polygon.points[(corner + 1) % polygon.points.size()];
            // A corner belongs to the edge that it is the left end of.
            if ((one.x <= x) != (next.x <= x)) {
                edges.push_back(one.y + (x - one.x) / (next.x - one.x) * (next.y - one.y));
            }
        }
        std::sort(edges.begin(), edges.end());
        for (std::size_t edge = 0; edge + 1 < edges.size(); edge += 2) {
            what(point, first_from(edges[edge], scale_codes),
                 first_from(edges[edge + 1], scale_codes));
        }
    }
}

std::uint64_t counts_of(const Density& density, int point, int first, int end) {
    const Density::Codes passed = density.passed(point);
    const int from = std::max(first, passed.first);
    const int to = std::min(end, passed.end);
    if (from >= to) {
        return 0;
    }
    const auto counts = density.at(point).subspan(static_cast<std::size_t>(from),
                                                  static_cast<std::size_t>(to - from));
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

std::uint64_t counts_inside(const Collected& collected, const MaskPolygon& polygon) {
    std::uint64_t sum = 0;
    for_each_inside(polygon, collected.counts.points(), [&](int point, int first, int end) {
        sum += counts_of(collected.counts, point, first, end);
    });
    return sum;
}

double samples_of(const Collected& collected, const PlacedMask& mask) {
    std::uint64_t sum = 0;
    for (int point = mask.first_point; point < mask.end_point; ++point) {
        sum += counts_of(collected.counts, point, 0, scale_codes);
    }
    return static_cast<double>(sum);
}

/// On which side of a polygon the trace is.
enum class TraceIs { above, below, around };

TraceIs side_of(const Collected& collected, const MaskPolygon& polygon) {
    const Bounds bounds = bounds_of(polygon);
    const int points = collected.counts.points();
    const int middle = first_from((bounds.low + bounds.high) / 2.0, scale_codes);
    double below = 0.0;
    double above = 0.0;
    for (int point = first_from(bounds.left, points); point < points && point <= bounds.right;
         ++point) {
        below += static_cast<double>(counts_of(collected.counts, point, 0, middle));
        above += static_cast<double>(counts_of(collected.counts, point, middle, scale_codes));
    }
    if (std::min(below, above) > share_of_a_side * (below + above)) {
        return TraceIs::around;
    }
    return above > below ? TraceIs::above : TraceIs::below;
}

std::vector<TraceIs> sides_of(const Collected& collected, const PlacedMask& mask) {
    std::vector<TraceIs> sides;
    sides.reserve(mask.polygons.size());
    for (const MaskPolygon& polygon : mask.polygons) {
        sides.push_back(side_of(collected, polygon));
    }
    return sides;
}

MaskPolygon grown_polygon(MaskPolygon polygon, TraceIs side, double margin, double half) {
    const Bounds bounds = bounds_of(polygon);
    const double x = (bounds.left + bounds.right) / 2.0;
    const double y = (bounds.low + bounds.high) / 2.0;
    for (MaskPoint& point : polygon.points) {
        if (side == TraceIs::around) {
            point.x = x + (point.x - x) * (1.0 + margin);
            point.y = y + (point.y - y) * (1.0 + margin);
        } else if (side == TraceIs::above && point.y >= y) {
            point.y = std::max(point.y + margin * half, bounds.low);
        } else if (side == TraceIs::below && point.y <= y) {
            point.y = std::min(point.y - margin * half, bounds.high);
        }
    }
    return polygon;
}

/// Whether more than `allowed` counters lie in `mask`, grown by `margin`.
bool hit_too_often(const Collected& collected, const PlacedMask& mask,
                   const std::vector<TraceIs>& sides, double margin, double allowed) {
    double hits = 0.0;
    for (std::size_t index = 0; index < mask.polygons.size(); ++index) {
        hits += static_cast<double>(
            counts_inside(collected, grown_polygon(mask.polygons[index], sides[index], margin,
                                                   mask.half_amplitude)));
        if (hits > allowed) {
            return true;
        }
    }
    return false;
}

/// `mask` with each corner where `place` puts it.
template <typename Place>
PlacedMask placed(const Mask& mask, Place place) {
    PlacedMask result;
    for (MaskPolygon polygon : mask.polygons) {
        for (MaskPoint& point : polygon.points) {
            point = place(point);
        }
        result.polygons.push_back(std::move(polygon));
    }
    return result;
}

} // namespace

PlacedMask placed_at_eye(const Collected& collected, const Mask& mask, const Eye& eye) {
    const MeasuredWith& with = collected.with;
    const double first = (eye.crossing - with.first_time) / with.time_per_point;
    const double interval = eye.interval / with.time_per_point;
    const double zero = code_at(with, eye.levels.zero.mean);
    const double one = code_at(with, eye.levels.one.mean);
    PlacedMask result = placed(mask, [&](const MaskPoint& point) {
        return MaskPoint{first + point.x * interval, zero + point.y * (one - zero)};
    });
    const int points = collected.counts.points();
    result.first_point = first_from(first, points);
    result.end_point = first_from(first + interval, points);
    result.half_amplitude = std::fabs(one - zero) / 2.0;
    return result;
}

PlacedMask placed_in_time(const Collected& collected, const Mask& mask, const TwoLevels& levels) {
    const MeasuredWith& with = collected.with;
    PlacedMask result = placed(mask, [&](const MaskPoint& point) {
        return MaskPoint{(point.x - with.first_time) / with.time_per_point, code_at(with, point.y)};
    });
    const int points = collected.counts.points();
    result.first_point = points;
    for (const MaskPolygon& polygon : result.polygons) {
        const Bounds bounds = bounds_of(polygon);
        result.first_point = std::min(result.first_point, first_from(bounds.left, points));
        result.end_point =
            std::max(result.end_point, first_from(std::floor(bounds.right) + 1.0, points));
    }
    result.half_amplitude = levels.amplitude() / 2.0 / std::fabs(level_step(with));
    return result;
}

MaskHits mask_hits(const Collected& collected, const PlacedMask& mask) {
    MaskHits found;
    for (const MaskPolygon& polygon : mask.polygons) {
        found.by_polygon.push_back(static_cast<double>(counts_inside(collected, polygon)) /
                                   collected.weight);
        found.hits += found.by_polygon.back();
    }
    found.samples = samples_of(collected, mask) / collected.weight;
    found.ratio = found.samples > 0.0 ? found.hits / found.samples : 0.0;
    return found;
}

PlacedMask grown(const Collected& collected, const PlacedMask& mask, double margin) {
    PlacedMask result = mask;
    for (MaskPolygon& polygon : result.polygons) {
        polygon = grown_polygon(polygon, side_of(collected, polygon), margin, mask.half_amplitude);
    }
    return result;
}

Told<double> mask_margin(const Collected& collected, const PlacedMask& mask, double ratio) {
    const double samples = samples_of(collected, mask);
    if (!(samples > 0.0)) {
        return WhyNot::no_hits;
    }
    const std::vector<TraceIs> sides = sides_of(collected, mask);
    const auto fails = [&](double margin) {
        return hit_too_often(collected, mask, sides, margin, ratio * samples);
    };
    if (fails(least_margin)) {
        return WhyNot::closed;
    }
    double passes = least_margin;
    double too_much = most_margin;
    if (!fails(most_margin)) {
        return most_margin;
    }
    // What the mask itself does is asked first: most margins are less than one.
    for (const double first : {0.0, 1.0}) {
        (fails(first) ? too_much : passes) = first;
        if (too_much == first) {
            break;
        }
    }
    while (too_much - passes > margin_step) {
        const double between = (passes + too_much) / 2.0;
        (fails(between) ? too_much : passes) = between;
    }
    return passes;
}

} // namespace kv408
