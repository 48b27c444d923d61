#include "analysis/jitter.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "analysis/data_crossing.h"
#include "analysis/rest.h"

namespace kv408 {
namespace {

/// Hits after which a standard deviation is known to 2 % at two standard errors: 1 / (2 * 0.01^2).
constexpr double hits_wanted = 5000.0;
/// Hits after which 380 of 400 estimates from a normal distribution alone, the hardest case, had
/// its deviation within 10 %; from two lines that were two deviations apart all had both parts,
/// already after 16000.
constexpr double parts_hits_wanted = 25000.0;
constexpr double share_of_data_edges = 0.5;

/// The crossings of the way asked for; those of random data go both ways.
std::vector<Crossing> asked_for(const Crossings& crossings, const JitterSetup& setup) {
    std::vector<Crossing> places;
    for (const Crossing& place : crossings.places) {
        if (!setup.way || *setup.way == Crosses::both || place.way == Crosses::both ||
            place.way == *setup.way) {
            places.push_back(place);
        }
    }
    return places;
}

std::optional<Crossing> chosen(const std::vector<Crossing>& places, const JitterSetup& setup,
                               double centre) {
    if (setup.number) {
        const auto index = static_cast<std::size_t>(*setup.number) - 1;
        return *setup.number >= 1 && index < places.size() ? std::optional(places[index])
                                                           : std::nullopt;
    }
    std::optional<Crossing> nearest;
    for (const Crossing& place : places) {
        if (!nearest || std::fabs(place.point - centre) < std::fabs(nearest->point - centre)) {
            nearest = place;
        }
    }
    return nearest;
}

/// Points from one crossing to the next of the same way.
std::optional<double> interval_after(const Crossings& crossings, const Crossing& place) {
    if (crossings.interval) {
        return crossings.interval;
    }
    std::optional<double> least;
    for (const Crossing& other : crossings.places) {
        const double distance = std::fabs(other.point - place.point);
        if (other.way == place.way && distance > 0.0 && (!least || distance < *least)) {
            least = distance;
        }
    }
    return least;
}

/// Takes noise and the instrument's jitter off what has been found.
void take_off(Jitter& jitter, double instrument_ps) {
    const double by_noise = jitter.noise ? *jitter.noise / jitter.times.slope : 0.0;
    jitter.taken_off = std::hypot(by_noise, instrument_ps);
    const double sigma = jitter.times.sigma;
    const double rest = sigma * sigma - jitter.taken_off * jitter.taken_off;
    if (!jitter.noise) {
        jitter.rms = jitter.noise.why();
    } else if (rest < 0.0) {
        jitter.rms = WhyNot::only_noise;
    } else {
        jitter.rms = std::sqrt(rest);
    }
    const auto model = dual_dirac(jitter.times.times);
    if (model) {
        jitter.parts = without_spread(*model, std::hypot(jitter.taken_off, jitter.times.blur));
    } else {
        jitter.parts = model.why();
    }
}

Told<CrossingTimes> times_at(const Collected& collected, const TwoLevels& levels, double level,
                             const Crossing& place, double noise) {
    if (place.way != Crosses::both) {
        return edge_times(collected, levels, level, place, noise);
    }
    const auto crossing = data_crossing(collected, levels, level, place, noise);
    if (!crossing) {
        return crossing.why();
    }
    return crossing->times;
}

} // namespace

Told<Jitter> jitter_of(const Collected& collected, const JitterSetup& setup) {
    const auto levels = two_levels(collected);
    if (!levels) {
        return levels.why();
    }
    Jitter jitter;
    jitter.level = setup.level.value_or(levels->middle());
    const auto crossings = crossings_of(collected, *levels, jitter.level, setup.interval);
    if (!crossings) {
        return crossings.why();
    }
    const auto place =
        chosen(asked_for(*crossings, setup), setup, (collected.counts.points() - 1) / 2.0);
    if (!place) {
        return WhyNot::no_crossing;
    }
    jitter.noise = noise_at_rest(collected, *levels, *crossings);
    const auto times =
        times_at(collected, *levels, jitter.level, *place, jitter.noise ? *jitter.noise : 0.0);
    if (!times) {
        return times.why();
    }
    const auto statistics = statistics_of(times->times);
    if (!statistics) {
        return WhyNot::few_hits;
    }
    jitter.times = *times;
    jitter.way = place->way;
    jitter.peak_to_peak = statistics->peak_to_peak;
    jitter.interval = interval_after(*crossings, *place);
    if (jitter.interval) {
        *jitter.interval *= collected.with.time_per_point;
    }
    const double sweeps_per_hit = static_cast<double>(collected.sweeps) / jitter.times.hits;
    jitter.sweeps_wanted = hits_wanted * sweeps_per_hit;
    jitter.parts_wanted = parts_hits_wanted * sweeps_per_hit;
    take_off(jitter, setup.instrument_ps);
    return jitter;
}

Told<std::vector<double>> bathtub(const Jitter& jitter, int places) {
    if (!jitter.parts) {
        return jitter.parts.why();
    }
    if (!jitter.interval) {
        return WhyNot::one_crossing;
    }
    const double edges = jitter.way == Crosses::both ? share_of_data_edges : 1.0;
    std::vector<double> ratios;
    for (int place = 0; place <= places; ++place) {
        ratios.push_back(bit_error_ratio(*jitter.parts, jitter.times.mean,
                                         *jitter.interval * place / places, *jitter.interval,
                                         edges));
    }
    return ratios;
}

} // namespace kv408
