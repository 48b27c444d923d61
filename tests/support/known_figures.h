#pragma once

// What noise, jitter and eyes of the simulated instrument are, and what is computed of them after
// as many sweeps as the computation itself asks for.

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "analysis/eye.h"
#include "analysis/jitter.h"
#include "analysis/mask.h"
#include "support/collecting_program.h"

namespace kv408 {

/// A number that is known and what was found for it.
struct KnownFigure {
    std::string name;
    double truth;
    Told<double> value;
    double allowed; ///< deviation that is allowed
    std::string unit;

    [[nodiscard]] bool holds() const { return value && std::fabs(*value - truth) <= allowed; }
};

/// A signal, and what should be found of it.
struct FigureCase {
    std::string name;
    Collecting collecting;
    /// Its figures, once enough sweeps have been collected.
    std::function<std::vector<KnownFigure>(CollectingProgram&)> figures;
};

namespace known {

/// Noise of the signal and of the sampler, of which each code is `atten` millivolts, and of the
/// rounding to codes, together, millivolts rms.
inline double noise_mv(const simulator::Source& signal, double atten, double sampler_codes) {
    return std::sqrt(signal.noise_mv * signal.noise_mv +
                     atten * atten * (sampler_codes * sampler_codes + 1.0 / 12.0));
}

/// Of an edge in its middle: a raised cosine that takes its rise time for the inner 80 %.
inline double slope(const simulator::Source& signal) {
    const double inner_part = 1.0 - 2.0 * std::acos(0.8) / std::numbers::pi;
    return signal.amplitude_mvpp * std::numbers::pi / 2.0 / (signal.rise_time_ps / inner_part);
}

/// Of such an edge from 20 % to 80 %.
inline double duration_20_80(const simulator::Source& signal) {
    const double inner_part = 1.0 - 2.0 * std::acos(0.8) / std::numbers::pi;
    return signal.rise_time_ps / inner_part * 2.0 * std::asin(0.6) / std::numbers::pi;
}

inline double own_jitter(const simulator::Source& signal) {
    return std::sqrt(signal.jitter_ps * signal.jitter_ps +
                     signal.sine_jitter_ps * signal.sine_jitter_ps / 2.0);
}

/// The computation's result after as many sweeps as it asks for itself.
template <typename Compute>
auto after_wanted(CollectingProgram& program, Compute compute) {
    constexpr std::uint64_t first = 300;
    auto result = compute(program.after(first));
    if (result) {
        result = compute(program.after(static_cast<std::uint64_t>(result->sweeps_wanted) + 1));
    }
    return result;
}

template <typename Result, typename Part>
Told<double> part_of(const Told<Result>& result, Part part) {
    return result ? Told<double>(part(*result)) : Told<double>(result.why());
}

inline std::vector<KnownFigure> edge_figures(CollectingProgram& program, double sampler_codes) {
    const auto jitter =
        after_wanted(program, [](const Collected& all) { return jitter_of(all, {}); });
    const double atten = program.after(1).with.conversion.atten;
    const double noise = noise_mv(program.signal(), atten, sampler_codes);
    const double random = program.signal().jitter_ps;
    const double all = std::hypot(random, noise / slope(program.signal()));
    return {
        {"noise", noise, jitter ? jitter->noise : Told<double>(jitter.why()), 0.02 * noise, "mV"},
        {"crossing times, sigma", all,
         part_of(jitter, [](const Jitter& found) { return found.times.sigma; }), 0.02 * all, "ps"},
        {"jitter, rms", random, jitter ? jitter->rms : Told<double>(jitter.why()), 0.02 * random,
         "ps"},
    };
}

/// Of an edge with random jitter alone, the dual-Dirac parts after as many sweeps as they ask for.
inline std::vector<KnownFigure> random_figures(CollectingProgram& program, double sampler_codes) {
    const auto wanted = jitter_of(program.after(300), {});
    const auto sweeps = wanted ? static_cast<std::uint64_t>(wanted->parts_wanted) + 1 : 0;
    const auto jitter = jitter_of(program.after(sweeps), {});
    const Told<DualDirac> parts = jitter ? jitter->parts : Told<DualDirac>(jitter.why());
    const double random = program.signal().jitter_ps;
    const double atten = program.after(1).with.conversion.atten;
    const double noise = noise_mv(program.signal(), atten, sampler_codes) / slope(program.signal());
    return {
        {"crossing times, sigma", std::hypot(random, noise),
         part_of(jitter, [](const Jitter& found) { return found.times.sigma; }),
         0.02 * std::hypot(random, noise), "ps"},
        {"random part", random, part_of(parts, [](const DualDirac& one) { return one.random; }),
         0.1 * random, "ps"},
        {"total jitter at 1e-12", 14.069 * random,
         part_of(parts, [](const DualDirac& one) { return one.total(told_error_ratio); }),
         0.1 * 14.069 * random, "ps"},
    };
}

inline std::vector<KnownFigure> eye_figures(CollectingProgram& program, double sampler_codes) {
    const auto eye = after_wanted(program, [](const Collected& all) { return eye_of(all, {}); });
    const simulator::Source& signal = program.signal();
    const double atten = program.after(1).with.conversion.atten;
    const double noise = noise_mv(signal, atten, sampler_codes);
    const double interval = 1e12 / signal.frequency_hz;
    const double sigma = std::hypot(own_jitter(signal), noise / slope(signal));
    const double height = signal.amplitude_mvpp - 6.0 * noise;
    const double width = interval - 6.0 * sigma;
    const double q = signal.amplitude_mvpp / (2.0 * noise);
    const double duration = duration_20_80(signal);
    const auto told = [&](auto part) { return part_of(eye, part); };
    const auto of = [&](Told<double> Eye::*part) {
        return eye ? (*eye).*part : Told<double>(eye.why());
    };
    return {
        {"unit interval", interval, told([](const Eye& one) { return one.interval; }),
         0.005 * interval, "ps"},
        {"one level", signal.amplitude_mvpp / 2.0,
         told([](const Eye& one) { return one.levels.one.mean; }), 1.0, "mV"},
        {"zero level", -signal.amplitude_mvpp / 2.0,
         told([](const Eye& one) { return one.levels.zero.mean; }), 1.0, "mV"},
        {"sigma of ones", noise, told([](const Eye& one) { return one.levels.one.sigma; }),
         0.02 * noise, "mV"},
        {"sigma of zeros", noise, told([](const Eye& one) { return one.levels.zero.sigma; }),
         0.02 * noise, "mV"},
        {"crossing, sigma", sigma, told([](const Eye& one) { return one.crossing_sigma; }),
         0.02 * sigma, "ps"},
        {"eye height", height, of(&Eye::height), 0.02 * height, "mV"},
        {"eye width", width, of(&Eye::width), 0.02 * width, "ps"},
        {"Q", q, of(&Eye::q), 0.02 * q, ""},
        {"duty-cycle distortion", signal.distortion_ps,
         told([](const Eye& one) { return one.distortion; }), 0.002 * interval, "ps"},
        {"rise time", duration, of(&Eye::rise_time), 0.05 * duration, "ps"},
        {"fall time", duration, of(&Eye::fall_time), 0.05 * duration, "ps"},
    };
}

/// Of random data whose edges fall later than they rise: two sharp lines, spread by random jitter.
inline std::vector<KnownFigure> line_figures(CollectingProgram& program, double sampler_codes) {
    const auto jitter =
        after_wanted(program, [](const Collected& all) { return jitter_of(all, {}); });
    const simulator::Source& signal = program.signal();
    const double atten = program.after(1).with.conversion.atten;
    // The crossing's interval is not on the screen, so noise is not taken off.
    const double random =
        std::hypot(signal.jitter_ps, noise_mv(signal, atten, sampler_codes) / slope(signal));
    const double total = signal.distortion_ps + 14.069 * random;
    const Told<DualDirac> parts = jitter ? jitter->parts : Told<DualDirac>(jitter.why());
    return {
        {"random part", random, part_of(parts, [](const DualDirac& one) { return one.random; }),
         0.1 * random, "ps"},
        {"deterministic part", signal.distortion_ps,
         part_of(parts, [](const DualDirac& one) { return one.deterministic; }),
         0.1 * signal.distortion_ps, "ps"},
        {"total jitter at 1e-12", total,
         part_of(parts, [](const DualDirac& one) { return one.total(told_error_ratio); }),
         0.1 * total, "ps"},
    };
}

/// A rectangle of four tenths of the interval and one of the amplitude.
inline Mask rectangle() {
    return {.name = "rectangle",
            .source = {},
            .polygons = {{"", {{0.3, 0.45}, {0.7, 0.45}, {0.7, 0.55}, {0.3, 0.55}}}}};
}

/// By how much that can grow until an edge of `signal`, which has neither noise nor jitter, touches
/// it: each moment of an edge is compared with the rectangle's right half, seen from its middle.
inline double true_margin(const simulator::Source& signal) {
    const double interval = 1e12 / signal.frequency_hz;
    const double length =
        slope(signal) > 0.0 ? signal.amplitude_mvpp * std::numbers::pi / 2.0 / slope(signal) : 0.0;
    double least = 1e9;
    for (int step = 0; step <= 100000; ++step) {
        // A falling edge that ends the interval, as parts of interval and amplitude from its
        // middle.
        const double time = -0.5 * length * (1.0 - step / 50000.0);
        const double x = 0.5 + time / interval;
        const double y = 0.5 * std::sin(std::numbers::pi * -time / length);
        if (x > 0.0) {
            least = std::min(least, std::max(x / 0.2, std::fabs(y) / 0.05));
        }
    }
    return least - 1.0;
}

inline std::vector<KnownFigure> mask_figures(CollectingProgram& program) {
    const Collected& all = program.after(300);
    const auto eye = eye_of(all, {});
    const auto margin = eye ? mask_margin(all, placed_at_eye(all, rectangle(), *eye), 0.0)
                            : Told<double>(eye.why());
    // A column to a side, of the 0.2 intervals that the rectangle reaches to that side.
    const double column = all.with.time_per_point * program.signal().frequency_hz * 1e-12 / 0.2;
    return {{"mask margin", true_margin(program.signal()), margin, column, ""}};
}

} // namespace known

/// The cases of docs/accuracy.md.
inline std::vector<FigureCase> figure_cases() {
    using simulator::TestConnection;
    const auto square = [](simulator::Source& signal) {
        signal.kind = simulator::SignalKind::square;
        signal.rise_time_ps = 2000.0;
        signal.jitter_ps = 100.0;
        signal.noise_mv = 4.0;
    };
    const auto distorted = [](simulator::Source& signal) {
        signal.jitter_ps = 400.0;
        signal.distortion_ps = 3000.0;
        signal.noise_mv = 2.0;
    };
    const auto edge = [](CollectingProgram& program) { return known::edge_figures(program, 1.0); };
    const auto eye = [](CollectingProgram& program) { return known::eye_figures(program, 1.0); };
    const auto silent = [](simulator::Source& signal) {
        signal.jitter_ps = 0.0;
        signal.noise_mv = 0.0;
    };
    const auto lines = [](CollectingProgram& program) { return known::line_figures(program, 1.0); };
    return {
        {"an edge of 2 ns, 5ns/div",
         {.change = square, .time_base = "5ns/div", .delay = "55000"},
         edge},
        {"the same on an inverted channel, 2ns/div",
         {.change = square, .time_base = "2ns/div", .delay = "70000", .inverted = true},
         edge},
        {"the dual-Dirac parts of that edge, 2ns/div",
         {.change = square, .time_base = "2ns/div", .delay = "70000"},
         [](CollectingProgram& program) { return known::random_figures(program, 1.0); }},
        {"Eye, clean, 20ns/div", {}, eye},
        {"Eye, with jitter and noise, 20ns/div",
         {.connection = TestConnection::eye_jitter_noise},
         eye},
        {"data with 3 ns of duty-cycle distortion, 5ns/div",
         {.change = distorted, .time_base = "5ns/div", .delay = "55000"},
         lines},
        {"a rectangle in an eye without noise and jitter, 20ns/div",
         {.change = silent, .sampler_noise_codes = 0.0},
         known::mask_figures},
    };
}

} // namespace kv408
