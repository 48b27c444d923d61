#include "spectrum/spectrum.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numeric>

#include <kissfft/kissfft.hh>

#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::size_t fewest_points = 8;
/// What stands for nothing at all.
constexpr double least_power = 1e-40;

double weighted_mean(std::span<const double> values, std::span<const double> weights) {
    return std::inner_product(values.begin(), values.end(), weights.begin(), 0.0) /
           std::accumulate(weights.begin(), weights.end(), 0.0);
}

} // namespace

Spectrum spectrum_of(std::span<const double> millivolts, double interval, SpectrumWindow window) {
    const std::size_t points = millivolts.size();
    Spectrum spectrum;
    spectrum.window = window;
    if (points < fewest_points || !(interval > 0.0)) {
        return spectrum;
    }
    spectrum.step = picoseconds_per_second / (interval * static_cast<double>(points));
    const std::vector<double> weights = window_weights(window, points);
    const double mean = weighted_mean(millivolts, window_weights(SpectrumWindow::hann, points));
    std::vector<std::complex<double>> weighted(points);
    std::vector<std::complex<double>> lines(points);
    for (std::size_t point = 0; point < points; ++point) {
        weighted[point] = (millivolts[point] - mean) / millivolts_per_volt * weights[point];
    }
    const kissfft<double> transform(points, false);
    transform.transform(weighted.data(), lines.data());
    const double sum = std::accumulate(weights.begin(), weights.end(), 0.0);
    double squares = 0.0;
    for (const double weight : weights) {
        squares += weight * weight;
    }
    spectrum.noise_width = static_cast<double>(points) * squares / (sum * sum);
    for (std::size_t line = 0; line <= points / 2; ++line) {
        // All lines but the one at the limit stand for their mirrored ones too.
        const double sides = 2 * line == points ? 1.0 : 2.0;
        spectrum.power.push_back(sides * std::norm(lines[line]) / (sum * sum));
    }
    spectrum.power.front() = mean * mean / (millivolts_per_volt * millivolts_per_volt);
    return spectrum;
}

double dbv(double power) {
    return 10.0 * std::log10(std::max(power, least_power));
}

double dbm(double power) {
    constexpr double ohms = 50.0;
    constexpr double milliwatt = 1e-3;
    return dbv(power) + 10.0 * std::log10(1.0 / (ohms * milliwatt));
}

} // namespace kv408
