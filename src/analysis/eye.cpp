#include "analysis/eye.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "analysis/crossings.h"
#include "analysis/data_crossing.h"
#include "analysis/two_levels.h"

namespace kv408 {
namespace {

constexpr double duration_part = 0.2;
/// Hits after which a standard deviation is known to 2 % at two standard errors.
constexpr double wanted_hits = 5000.0;

Told<Crossings> eye_crossings(const Collected& collected, const TwoLevels& levels,
                              const EyeSetup& setup) {
    std::optional<double> interval = setup.interval;
    if (!setup.crossing || !interval) {
        auto found = crossings_of(collected, levels, levels.middle(), interval);
        if (!found) {
            return found.why();
        }
        if (!found->interval) {
            return WhyNot::one_crossing;
        }
        if (!setup.crossing) {
            return found;
        }
        interval = *found->interval * collected.with.time_per_point;
    }
    return crossings_at(collected, *setup.crossing, *interval);
}

/// The hits about the eye's two levels; `levels` are set to these.
Told<OneAndZero> eye_levels(const Collected& collected, const Crossings& crossings,
                            TwoLevels& levels) {
    auto middle = middle_of_intervals(collected, crossings, levels.middle(), eye_middle_part);
    if (middle) {
        const double between = (middle->one.mean + middle->zero.mean) / 2.0;
        middle = middle_of_intervals(collected, crossings, between, eye_middle_part);
    }
    if (middle) {
        levels.one = middle->one.mean;
        levels.zero = middle->zero.mean;
    }
    return middle;
}

/// Sums over all crossings on the screen, each counting by its hits.
struct CrossingSums {
    double hits = 0.0;
    double variance = 0.0;
    double level = 0.0;
    double distortion = 0.0;
    double slope = 0.0;
    double duration_hits = 0.0;
    double rise = 0.0;
    double fall = 0.0;
    WhyNot why_no_crossing = WhyNot::no_crossing;
    WhyNot why_no_duration = WhyNot::few_hits;
};

CrossingSums crossing_sums(const Collected& collected, const TwoLevels& levels,
                           const Crossings& crossings, double noise) {
    CrossingSums sums;
    for (const Crossing& place : crossings.places) {
        const auto crossing = data_crossing(collected, levels, levels.middle(), place, noise);
        if (!crossing) {
            sums.why_no_crossing = crossing.why();
            continue;
        }
        sums.hits += crossing->hits;
        sums.variance += crossing->hits * crossing->sigma * crossing->sigma;
        sums.level += crossing->hits * crossing->level;
        sums.distortion += crossing->hits * crossing->falls_later;
        sums.slope += crossing->hits * crossing->slope;
        const auto duration = edge_durations(collected, levels, place, *crossing, duration_part);
        if (!duration) {
            sums.why_no_duration = duration.why();
            continue;
        }
        sums.duration_hits += crossing->hits;
        sums.rise += crossing->hits * duration->rise;
        sums.fall += crossing->hits * duration->fall;
    }
    return sums;
}

Told<double> open_part(double size) {
    if (size > 0.0) {
        return size;
    }
    return WhyNot::closed;
}

/// Computes from the levels: amplitude, height, Q, signal to noise.
void tell_levels(Eye& eye, bool clipped) {
    const auto& [one, zero] = eye.levels;
    eye.amplitude = one.mean - zero.mean;
    if (clipped) {
        eye.height = eye.q = eye.signal_to_noise = WhyNot::clipped;
        return;
    }
    eye.height = open_part(eye.amplitude - eye_sigmas * (one.sigma + zero.sigma));
    if (one.sigma + zero.sigma > 0.0) {
        eye.q = eye.amplitude / (one.sigma + zero.sigma);
        const double rms = std::sqrt((one.sigma * one.sigma + zero.sigma * zero.sigma) / 2.0);
        eye.signal_to_noise = 20.0 * std::log10(eye.amplitude / rms);
    } else {
        eye.q = eye.signal_to_noise = WhyNot::few_hits;
    }
}

void tell_crossings(Eye& eye, const CrossingSums& sums, double sweeps) {
    eye.crossing_hits = sums.hits;
    eye.crossing_sigma = std::sqrt(sums.variance / sums.hits);
    eye.crossing_level = sums.level / sums.hits;
    eye.crossing_percentage = 100.0 * (eye.crossing_level - eye.levels.zero.mean) / eye.amplitude;
    eye.distortion = sums.distortion / sums.hits;
    eye.slope = sums.slope / sums.hits;
    eye.width = open_part(eye.interval - 2.0 * eye_sigmas * eye.crossing_sigma);
    eye.sweeps_wanted = sweeps * wanted_hits / sums.hits;
    if (sums.duration_hits > 0.0) {
        eye.rise_time = sums.rise / sums.duration_hits;
        eye.fall_time = sums.fall / sums.duration_hits;
    } else {
        eye.rise_time = eye.fall_time = sums.why_no_duration;
    }
}

/// The crossing to the left of the interval whose middle is nearest to that of the screen, point.
double shown_crossing(const Crossings& crossings, int points) {
    const double interval = *crossings.interval;
    const double first = crossings.places.front().point;
    return first + interval * std::round(((points - 1) / 2.0 - interval / 2.0 - first) / interval);
}

} // namespace

Told<Eye> eye_of(const Collected& collected, const EyeSetup& setup) {
    const auto rough = two_levels(collected);
    if (!rough) {
        return rough.why();
    }
    TwoLevels levels = *rough;
    const auto crossings = eye_crossings(collected, levels, setup);
    if (!crossings) {
        return crossings.why();
    }
    const auto middle = eye_levels(collected, *crossings, levels);
    if (!middle) {
        return middle.why();
    }
    const double noise = std::sqrt(
        (middle->one.sigma * middle->one.sigma + middle->zero.sigma * middle->zero.sigma) / 2.0);
    const CrossingSums sums = crossing_sums(collected, levels, *crossings, noise);
    if (!(sums.hits > 0.0)) {
        return sums.why_no_crossing;
    }
    Eye eye;
    eye.interval = *crossings->interval * collected.with.time_per_point;
    eye.crossing = time_of(collected.with, shown_crossing(*crossings, collected.counts.points()));
    eye.levels = *middle;
    tell_levels(eye, levels.clipped);
    tell_crossings(eye, sums, static_cast<double>(collected.sweeps));
    return eye;
}

} // namespace kv408
