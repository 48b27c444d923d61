#include "spectrum/spectral_lines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kv408 {
namespace {

constexpr double above_median = 20.0;
constexpr double of_highest = 1e-10;
constexpr int last_harmonic = 6;

/// Lines from `first` to before `end`.
struct Lobe {
    std::size_t first = 0;
    std::size_t end = 0;
};

/// The lines of a sine whose highest is `line`.
Lobe lobe_at(const Spectrum& spectrum, std::size_t line) {
    const std::size_t reach = lobe_lines(spectrum.window);
    return {line > reach ? line - reach : 1, std::min(line + reach + 1, spectrum.power.size())};
}

/// Power of the sine in `lobe`, wherever between two lines it lies.
double power_in(const Spectrum& spectrum, Lobe lobe) {
    double power = 0.0;
    for (std::size_t line = lobe.first; line < lobe.end; ++line) {
        power += spectrum.power[line];
    }
    return power / spectrum.noise_width;
}

SpectralPeak peak_at(const Spectrum& spectrum, std::size_t line) {
    const Lobe lobe = lobe_at(spectrum, line);
    double sum = 0.0;
    double moment = 0.0;
    for (std::size_t at = lobe.first; at < lobe.end; ++at) {
        sum += spectrum.power[at];
        moment += spectrum.power[at] * static_cast<double>(at);
    }
    return {
        .line = line, .frequency = spectrum.frequency(moment / sum), .power = spectrum.power[line]};
}

} // namespace

std::vector<SpectralPeak> peaks_of(const Spectrum& spectrum, std::size_t most) {
    const std::vector<double>& power = spectrum.power;
    if (power.empty()) {
        return {};
    }
    std::vector<double> sorted = power;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    const double least = std::max(above_median * *middle,
                                  of_highest * *std::max_element(power.begin(), power.end()));
    std::vector<SpectralPeak> peaks;
    for (std::size_t line = 1; line < power.size(); ++line) {
        const Lobe lobe = lobe_at(spectrum, line);
        const auto begin = power.begin();
        const auto highest = std::max_element(begin + static_cast<std::ptrdiff_t>(lobe.first),
                                              begin + static_cast<std::ptrdiff_t>(lobe.end));
        if (static_cast<std::size_t>(highest - begin) == line && power[line] > least) {
            peaks.push_back(peak_at(spectrum, line));
        }
    }
    std::stable_sort(
        peaks.begin(), peaks.end(),
        [](const SpectralPeak& one, const SpectralPeak& other) { return one.power > other.power; });
    peaks.resize(std::min(peaks.size(), most));
    return peaks;
}

double least_periods_of_level(SpectrumWindow window) {
    constexpr double of_narrow_lobes = 2.0;
    constexpr double of_wide_lobes = 3.0;
    const bool narrow = window == SpectrumWindow::hann || window == SpectrumWindow::none;
    return narrow ? of_narrow_lobes : of_wide_lobes;
}

std::size_t least_line_of_purity(SpectrumWindow window) {
    return 2 * lobe_lines(window) + 1;
}

std::optional<Purity> purity_of(const Spectrum& spectrum) {
    const std::vector<SpectralPeak> highest = peaks_of(spectrum, 1);
    if (highest.empty()) {
        return std::nullopt;
    }
    Purity purity{.fundamental = highest.front()};
    if (purity.fundamental.line < least_line_of_purity(spectrum.window)) {
        return std::nullopt;
    }
    std::vector<bool> noise(spectrum.power.size(), true);
    const auto take_out = [&](Lobe lobe) {
        for (std::size_t line = lobe.first; line < lobe.end; ++line) {
            noise[line] = false;
        }
    };
    take_out({0, 1});
    const Lobe own = lobe_at(spectrum, purity.fundamental.line);
    const double signal = power_in(spectrum, own);
    take_out(own);
    double distortion = 0.0;
    for (int harmonic = 2; harmonic <= last_harmonic; ++harmonic) {
        const auto line = static_cast<std::size_t>(
            std::llround(harmonic * purity.fundamental.frequency / spectrum.step));
        if (line + 1 >= spectrum.power.size()) {
            break;
        }
        distortion += power_in(spectrum, lobe_at(spectrum, line));
        take_out(lobe_at(spectrum, line));
        purity.harmonics = harmonic;
    }
    double noise_power = 0.0;
    double lines = 0.0;
    for (std::size_t line = 0; line < noise.size(); ++line) {
        if (noise[line]) {
            noise_power += spectrum.power[line];
            lines += 1.0;
        }
    }
    purity.distortion = std::sqrt(distortion / signal);
    const double whole =
        lines > 0.0 ? noise_power / lines * static_cast<double>(noise.size()) / spectrum.noise_width
                    : 0.0;
    purity.signal_to_noise = whole > 0.0 ? signal / whole : std::numeric_limits<double>::infinity();
    return purity;
}

} // namespace kv408
