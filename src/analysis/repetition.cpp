#include "analysis/repetition.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <tuple>
#include <utility>

namespace kv408 {
namespace {

/// Points that are looked at together while an interval is looked for.
constexpr std::size_t points_together = 5;
/// Each interval that is tried is this part of the one before.
constexpr double next_interval = 0.99;
constexpr double longest_part = 0.75;  ///< of all points
constexpr double shortest_points = 20; ///< at all
/// An interval that agrees this well, compared with the best one, is one in which hits repeat.
constexpr double agreement = 0.8;
/// Part of the hits that has to stand out for the rest to be a floor.
constexpr double least_contrast = 0.3;
/// A gathering is looked at this far to both sides, of an interval, and is whole where this much
/// of it is on the screen.
constexpr double looked_at_part = 0.42;
constexpr double whole_part = 0.25;
constexpr int refinements = 6;
/// Between two gatherings there are at most this part of the hits at them.
constexpr double most_between = 0.5;

/// The hits above their floor, some points together.
std::vector<double> standing_out(std::span<const double> hits, std::size_t together) {
    std::vector<double> sums;
    for (std::size_t first = 0; first + together <= hits.size(); first += together) {
        const auto part = hits.subspan(first, together);
        sums.push_back(std::accumulate(part.begin(), part.end(), 0.0));
    }
    const double floor = sums.empty() ? 0.0 : *std::min_element(sums.begin(), sums.end());
    for (double& sum : sums) {
        sum -= floor;
    }
    return sums;
}

/// The first harmonic of `hits` in `interval`, both in the same unit.
std::complex<double> harmonic(const std::vector<double>& hits, double interval) {
    const std::complex<double> step = std::polar(1.0, 2.0 * std::numbers::pi / interval);
    std::complex<double> turn = 1.0;
    std::complex<double> sum = 0.0;
    for (const double count : hits) {
        sum += count * turn;
        turn *= step;
    }
    return sum;
}

/// The interval with which `hits` repeat, in points.
double interval_of(std::span<const double> hits) {
    const std::vector<double> sums = standing_out(hits, points_together);
    std::vector<double> sizes;
    const double longest = longest_part * static_cast<double>(sums.size());
    double interval = longest;
    for (; interval > shortest_points / points_together; interval *= next_interval) {
        sizes.push_back(std::abs(harmonic(sums, interval)));
    }
    if (sizes.size() < 3) {
        return static_cast<double>(hits.size());
    }
    const double best = *std::max_element(sizes.begin() + 1, sizes.end() - 1);
    std::size_t which = 1;
    while (which + 2 < sizes.size() &&
           !(sizes[which] >= agreement * best && sizes[which] >= sizes[which - 1] &&
             sizes[which] >= sizes[which + 1])) {
        ++which;
    }
    return longest * std::pow(next_interval, static_cast<double>(which)) * points_together;
}

/// The mean place of what is at most `reach` from `place`.
double mean_place(const std::vector<double>& hits, double place, double reach) {
    const auto last = static_cast<double>(hits.size()) - 1.0;
    const auto first = static_cast<std::size_t>(std::clamp(std::ceil(place - reach), 0.0, last));
    const auto end = static_cast<std::size_t>(std::clamp(std::floor(place + reach), 0.0, last));
    double sum = 0.0;
    double weighted = 0.0;
    for (std::size_t point = first; point <= end; ++point) {
        sum += hits[point];
        weighted += hits[point] * static_cast<double>(point);
    }
    return sum > 0.0 ? weighted / sum : place;
}

/// The places of whole gatherings that are `interval` apart from `start` on.
std::vector<double> whole_places(const std::vector<double>& hits, double start, double interval) {
    const auto last = static_cast<double>(hits.size()) - 1.0;
    std::vector<double> places;
    const double room = whole_part * interval;
    const double first = start - std::floor((start - room) / interval) * interval;
    for (double place = first; place <= last - room; place += interval) {
        // As far to the left as to the right, for what lies on one side only moves the mean.
        const double reach = std::min({looked_at_part * interval, place, last - place});
        places.push_back(mean_place(hits, place, reach));
    }
    return places;
}

/// The line through the places by their number: its distance, and where it begins.
std::pair<double, double> distance_and_start(const std::vector<double>& places) {
    const auto count = static_cast<double>(places.size());
    double sum = 0.0;
    double weighted = 0.0;
    for (std::size_t index = 0; index < places.size(); ++index) {
        sum += places[index];
        weighted += places[index] * (static_cast<double>(index) - (count - 1.0) / 2.0);
    }
    const double distance = weighted * 12.0 / (count * (count * count - 1.0));
    return {distance, sum / count - distance * (count - 1.0) / 2.0};
}

/// The hits of five points about `place`.
double hits_about(const std::vector<double>& hits, double place) {
    const auto last = static_cast<double>(hits.size()) - 1.0;
    double sum = 0.0;
    for (int away = -2; away <= 2; ++away) {
        sum += hits[static_cast<std::size_t>(std::clamp(std::round(place) + away, 0.0, last))];
    }
    return sum;
}

/// Whether hits gather at all of `places` and not between them. A gathering may have two tops: it
/// is looked at in a tenth of `interval` to both sides.
bool stand_apart(const std::vector<double>& hits, const std::vector<double>& places,
                 double interval) {
    for (std::size_t index = 0; index + 1 < places.size(); ++index) {
        const double between = hits_about(hits, (places[index] + places[index + 1]) / 2.0);
        for (const double place : {places[index], places[index + 1]}) {
            const double top =
                std::max({hits_about(hits, place), hits_about(hits, place - 0.05 * interval),
                          hits_about(hits, place + 0.05 * interval),
                          hits_about(hits, place - 0.1 * interval),
                          hits_about(hits, place + 0.1 * interval)});
            if (between > most_between * top) {
                return false;
            }
        }
    }
    return true;
}

/// The one place at which all hits gather.
Repetition one_place(const std::vector<double>& hits) {
    const double middle = (static_cast<double>(hits.size()) - 1.0) / 2.0;
    return {.interval = std::nullopt, .places = {mean_place(hits, middle, middle)}};
}

} // namespace

Told<Repetition> repetition_of(std::span<const double> hits, std::optional<double> interval) {
    const double all = std::accumulate(hits.begin(), hits.end(), 0.0);
    if (!(all > 0.0)) {
        return WhyNot::no_crossing;
    }
    const std::vector<double> rough = standing_out(hits, points_together);
    if (std::accumulate(rough.begin(), rough.end(), 0.0) < least_contrast * all) {
        return WhyNot::closed;
    }
    const std::vector<double> single = standing_out(hits, 1);
    double size = interval.value_or(interval_of(hits));
    if (!(size >= 2.0)) {
        return WhyNot::points_apart;
    }
    double start =
        std::arg(harmonic(single, size)) / (2.0 * std::numbers::pi) * size; // of one gathering
    std::vector<double> places;
    for (int step = 0; step < refinements; ++step) {
        places = whole_places(single, start, size);
        if (places.empty()) {
            return WhyNot::no_crossing;
        }
        if (interval || places.size() < 2) {
            start = places.front();
            continue;
        }
        std::tie(size, start) = distance_and_start(places);
    }
    if (!interval && (places.size() < 2 || !stand_apart(single, places, size))) {
        return one_place(single);
    }
    return Repetition{.interval = size, .places = std::move(places)};
}

} // namespace kv408
