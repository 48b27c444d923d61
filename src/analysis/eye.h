#pragma once

#include <optional>

#include "analysis/collected.h"
#include "analysis/rest.h"
#include "analysis/told.h"

namespace kv408 {

/// The part of the unit interval, in its middle, in which one and zero level are measured, and by
/// how many standard deviations height and width are less than the distances of levels and
/// crossings (IEC 61280-2-2).
inline constexpr double eye_middle_part = 0.2;
inline constexpr double eye_sigmas = 3.0;

/// What is known of an eye beforehand.
struct EyeSetup {
    std::optional<double> interval = {}; ///< unit interval, picoseconds; none: found
    /// Time of a crossing, picoseconds after the trigger; none: found.
    std::optional<double> crossing = {};
};

/// An eye: random data, collected with their clock as trigger. Times in picoseconds, levels in
/// millivolts. IEC 61280-2-2 has the definitions where no other source is named.
struct Eye {
    double interval = 0.0;       ///< unit interval
    double crossing = 0.0;       ///< time of the crossing nearest to the left of the eye's middle
    double crossing_level = 0.0; ///< at which rising and falling edges cross
    OneAndZero levels;           ///< in the middle fifth of the interval
    double crossing_sigma = 0.0; ///< of the crossing times at the crossing level
    double crossing_hits = 0.0;  ///< number of hits that `crossing_sigma` was found from
    double slope = 0.0;          ///< of an edge at the crossing, millivolts per picosecond

    double amplitude = 0.0;               ///< one level less zero level
    Told<double> height = WhyNot::closed; ///< one - 3 sigma - (zero + 3 sigma)
    Told<double> width = WhyNot::closed;  ///< interval - 6 sigma of the crossings
    double crossing_percentage = 0.0;     ///< of the amplitude, 0..100
    Told<double> q = WhyNot::no_hits;     ///< amplitude / (sigma of ones + sigma of zeros)
    Told<double> signal_to_noise = WhyNot::no_hits; ///< 20 lg (amplitude / rms of both sigmas), dB
    Told<double> rise_time = WhyNot::few_hits;      ///< 20 % to 80 %
    Told<double> fall_time = WhyNot::few_hits;      ///< 80 % to 20 %
    /// Duty-cycle distortion: how much later edges fall than rise, half way between the levels.
    double distortion = 0.0;
    /// Sweeps after which the sigmas deviate by chance by 2 % only once in twenty times.
    double sweeps_wanted = 0.0;
};

/// The eye in `collected`. None where none of it can be told; a number of its own where only that
/// cannot. An eye whose height or width is 0 or less is told as closed in that direction.
[[nodiscard]] Told<Eye> eye_of(const Collected& collected, const EyeSetup& setup);

} // namespace kv408
