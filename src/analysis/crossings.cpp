#include "analysis/crossings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "analysis/repetition.h"

namespace kv408 {
namespace {

/// With less than the first share of its hits above the level a point is surely below it, with more
/// than the second surely above.
constexpr double surely_below = 0.25;
constexpr double surely_above = 0.75;
/// To find whether the trace is random data, one of so many points is looked at.
constexpr int look_apart = 4;
/// Half the height of the slice in which random data's crossings are looked for, of the amplitude.
constexpr double slice_part = 0.1;

std::uint64_t hits_between(const Density& density, int point, int first, int end) {
    const Density::Codes passed = density.passed(point);
    const int from = std::max(passed.first, first);
    const int to = std::min(passed.end, end);
    if (from >= to) {
        return 0;
    }
    const auto counts = density.at(point).subspan(static_cast<std::size_t>(from),
                                                  static_cast<std::size_t>(to - from));
    return std::accumulate(counts.begin(), counts.end(), std::uint64_t{0});
}

int code_from(double code) {
    return static_cast<int>(std::clamp(std::ceil(code), 0.0, double{scale_codes}));
}

/// The share of the hits of `point` above `level`; none where nothing was hit.
std::optional<double> share_above(const Collected& collected, int point, double level) {
    const int code = code_from(code_at(collected.with, level));
    const auto low = static_cast<double>(hits_between(collected.counts, point, 0, code));
    const auto high = static_cast<double>(hits_between(collected.counts, point, code, scale_codes));
    if (low + high <= 0.0) {
        return std::nullopt;
    }
    return (collected.with.conversion.inverted ? low : high) / (low + high);
}

bool is_random_data(const Collected& collected, double level) {
    int mixed = 0;
    int looked_at = 0;
    for (int point = 0; point < collected.counts.points(); point += look_apart) {
        const auto share = share_above(collected, point, level);
        if (share) {
            ++looked_at;
            mixed += *share > surely_below / 2.0 && *share < 1.0 - surely_below / 2.0 ? 1 : 0;
        }
    }
    return 2 * mixed > looked_at;
}

/// The point, between `from` and `to`, at which the share above the level passes a half.
double half_way(const std::vector<std::optional<double>>& shares, int from, int to) {
    int before = from;
    for (int point = from + 1; point <= to; ++point) {
        const auto& share = shares[static_cast<std::size_t>(point)];
        if (!share) {
            continue;
        }
        const double left = *shares[static_cast<std::size_t>(before)] - 0.5;
        const double right = *share - 0.5;
        if (left * right <= 0.0 && left != right) {
            return before + (point - before) * left / (left - right);
        }
        before = point;
    }
    return (from + to) / 2.0;
}

std::vector<Crossing> single_crossings(const Collected& collected, double level) {
    std::vector<std::optional<double>> shares;
    shares.reserve(static_cast<std::size_t>(collected.counts.points()));
    for (int point = 0; point < collected.counts.points(); ++point) {
        shares.push_back(share_above(collected, point, level));
    }
    std::vector<Crossing> found;
    int sure = -1; // the last point that surely lay on one side
    for (int point = 0; point < collected.counts.points(); ++point) {
        const auto& share = shares[static_cast<std::size_t>(point)];
        if (!share || (*share > surely_below && *share < surely_above)) {
            continue;
        }
        const bool above = *share >= surely_above;
        if (sure >= 0 && above != (*shares[static_cast<std::size_t>(sure)] >= surely_above)) {
            found.push_back({.point = half_way(shares, sure, point),
                             .way = above ? Crosses::rising : Crosses::falling});
        }
        sure = point;
    }
    return found;
}

/// Gives each of `places` the points that are nearer to it than to another, at most `reach`.
void share_points(std::vector<Crossing>& places, int points, double reach) {
    for (std::size_t index = 0; index < places.size(); ++index) {
        Crossing& place = places[index];
        double first = place.point - reach;
        double end = place.point + reach;
        if (index > 0) {
            first = std::max(first, (places[index - 1].point + place.point) / 2.0);
        }
        if (index + 1 < places.size()) {
            end = std::min(end, (places[index + 1].point + place.point) / 2.0);
        }
        place.first_point = std::max(0, static_cast<int>(std::ceil(first)));
        place.end_point = std::min(points, static_cast<int>(std::ceil(end)));
    }
}

Told<Crossings> data_crossings(const Collected& collected, double amplitude, double level,
                               std::optional<double> given_interval) {
    const double centre = code_at(collected.with, level);
    const double reach =
        std::max(1.0, slice_part * amplitude / std::fabs(level_step(collected.with)));
    const int points = collected.counts.points();
    std::vector<double> hits;
    hits.reserve(static_cast<std::size_t>(points));
    for (int point = 0; point < points; ++point) {
        hits.push_back(static_cast<double>(hits_between(
            collected.counts, point, code_from(centre - reach), code_from(centre + reach))));
    }
    std::optional<double> interval = given_interval;
    if (interval) {
        *interval /= collected.with.time_per_point;
    }
    const Told<Repetition> repetition = repetition_of(hits, interval);
    if (!repetition) {
        return repetition.why();
    }
    Crossings found;
    found.interval = repetition->interval;
    for (const double place : repetition->places) {
        found.places.push_back({.point = place, .way = Crosses::both});
    }
    share_points(found.places, points, repetition->interval.value_or(2.0 * points) / 2.0);
    return found;
}

} // namespace

Told<Crossings> crossings_of(const Collected& collected, const TwoLevels& levels, double level,
                             std::optional<double> given_interval) {
    if (level <= levels.zero || level >= levels.one) {
        return WhyNot::no_crossing;
    }
    if (is_random_data(collected, level)) {
        return data_crossings(collected, levels.amplitude(), level, given_interval);
    }
    Crossings found;
    found.places = single_crossings(collected, level);
    if (found.places.empty()) {
        return WhyNot::no_crossing;
    }
    share_points(found.places, collected.counts.points(),
                 static_cast<double>(collected.counts.points()));
    return found;
}

Told<Crossings> crossings_at(const Collected& collected, double time, double interval) {
    Crossings found;
    found.interval = interval / collected.with.time_per_point;
    const double apart = *found.interval;
    if (!(apart >= 2.0)) {
        return WhyNot::points_apart;
    }
    const int points = collected.counts.points();
    const double given = (time - collected.with.first_time) / collected.with.time_per_point;
    const double room = apart / 4.0;
    double point = given - std::floor((given - room) / apart) * apart;
    for (; point <= points - 1 - room; point += apart) {
        found.places.push_back({.point = point, .way = Crosses::both});
    }
    if (found.places.empty()) {
        return WhyNot::no_crossing;
    }
    share_points(found.places, points, apart / 2.0);
    return found;
}

} // namespace kv408
