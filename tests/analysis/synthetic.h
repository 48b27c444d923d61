#pragma once

// Densities of made-up signals whose noise and jitter are known: each point of each sweep is
// displaced by a jitter of its own, as in equivalent time.

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

#include "analysis/collected.h"

namespace kv408::synthetic {

/// An edge from 0 to 1 of raised-cosine shape, its middle at 0, `length` picoseconds long.
inline double edge(double time, double length) {
    const double place = std::clamp(time / length, -0.5, 0.5);
    return (1.0 + std::sin(std::numbers::pi * place)) / 2.0;
}

/// 640 points, 10 ps apart, from 1000 ps on; 0.25 mV per code, 0 mV at code 2048: -512 to 511 mV.
inline Collected nothing(bool inverted = false, double time_per_point = 10.0) {
    MeasuredWith with;
    with.first_time = 1000.0;
    with.time_per_point = time_per_point;
    with.conversion = {.inverted = inverted, .atten = 0.25, .vtfactor = 1.0, .swoffset = 0};
    return {.counts = Density(640), .with = with};
}

/// Counts `sweeps` sweeps of what `millivolts(time)` gives, time in picoseconds after the trigger.
inline void count(Collected& into, int sweeps, const std::function<double(double)>& millivolts) {
    std::vector<std::int16_t> codes(static_cast<std::size_t>(into.counts.points()));
    for (int sweep = 0; sweep < sweeps; ++sweep) {
        for (std::size_t point = 0; point < codes.size(); ++point) {
            const double level = millivolts(time_of(into.with, static_cast<double>(point)));
            codes[point] = static_cast<std::int16_t>(
                std::clamp(std::round(code_at(into.with, level)), -1.0, 4096.0));
        }
        into.counts.add(codes);
        ++into.sweeps;
    }
}

/// Random numbers that are the same in each run.
class Chance {
public:
    explicit Chance(unsigned seed) : engine_(seed) {}

    /// With standard deviation 1.
    double normal() {
        // Box and Muller, for the library's own are not the same everywhere.
        const double radius = std::sqrt(-2.0 * std::log(1.0 - uniform()));
        return radius * std::cos(2.0 * std::numbers::pi * uniform());
    }
    double uniform() { return static_cast<double>(engine_()) / 4294967296.0; }
    bool coin() { return (engine_() & 0x10000U) != 0; }

private:
    std::mt19937 engine_;
};

} // namespace kv408::synthetic
