#include "spectrum/spectrum.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <numeric>

#include "spectrum/spectral_lines.h"

namespace kv408 {
namespace {

constexpr std::size_t spectrum_points = 650;
constexpr double spacing_ps = 50.0;
/// From line to line of a block at that spacing: 1 / (650 * 50 ps).
constexpr double line_hz = 1e12 / (650.0 * 50.0);

constexpr std::array every_window = {SpectrumWindow::hann, SpectrumWindow::flat_top,
                                     SpectrumWindow::blackman_harris, SpectrumWindow::none};

/// A block whose point at `t` periods of the lowest line is `signal(t)` millivolts.
std::vector<double> points_of_signal(const std::function<double(double)>& signal) {
    std::vector<double> millivolts(spectrum_points);
    for (std::size_t point = 0; point < spectrum_points; ++point) {
        millivolts[point] = signal(static_cast<double>(point) / spectrum_points);
    }
    return millivolts;
}

double sine_of(double periods) {
    return std::sin(2.0 * std::numbers::pi * periods);
}

TEST(Spectrum, ASineOnALineHasItsRmsValueThereWhateverTheWindow) {
    // 200 mV at its peak is 141.42 mV rms: -16.99 dBV, -3.98 dBm.
    const auto points =
        points_of_signal([](double t) { return 30.0 + 200.0 * sine_of(20.0 * t + 0.1); });
    for (const SpectrumWindow window : every_window) {
        const Spectrum spectrum = spectrum_of(points, spacing_ps, window);
        ASSERT_EQ(spectrum.power.size(), 326U);
        EXPECT_NEAR(spectrum.step, line_hz, 1e-3);
        EXPECT_NEAR(spectrum.power[20], 0.02, 1e-9);
        EXPECT_NEAR(dbv(spectrum.power[20]), -16.9897, 1e-4);
        EXPECT_NEAR(dbm(spectrum.power[20]), -3.9794, 1e-4);
        EXPECT_NEAR(spectrum.power[0], 0.0009, 1e-12); // the mean's square
        EXPECT_LT(spectrum.power[300], 1e-18);
    }
    // The last line is the Nyquist limit, 1 / (2 * 50 ps).
    EXPECT_NEAR(spectrum_of(points, spacing_ps, {}).frequency(325.0), 10e9, 1e-3);
}

TEST(Spectrum, FlatTopReadsASineBetweenTwoLinesRight) {
    for (const double periods : {20.0, 20.1, 20.25, 20.4, 20.5, 100.5}) {
        const auto points =
            points_of_signal([&](double t) { return 200.0 * sine_of(periods * t); });
        const auto peaks = peaks_of(spectrum_of(points, spacing_ps, SpectrumWindow::flat_top), 1);
        ASSERT_EQ(peaks.size(), 1U);
        EXPECT_NEAR(dbv(peaks.front().power), -16.9897, 0.015) << periods;
        EXPECT_NEAR(peaks.front().frequency, periods * line_hz, 0.02 * line_hz) << periods;
    }
    // Hann reads one in the middle 1.42 dB too low, no window 3.92 dB (Harris 1978, table 1).
    const auto between = points_of_signal([](double t) { return 200.0 * sine_of(100.5 * t); });
    const auto level = [&](SpectrumWindow window) {
        return dbv(peaks_of(spectrum_of(between, spacing_ps, window), 1).front().power);
    };
    EXPECT_NEAR(level(SpectrumWindow::hann), -16.9897 - 1.42, 0.02);
    EXPECT_NEAR(level(SpectrumWindow::none), -16.9897 - 3.92, 0.05);
}

TEST(Spectrum, AFewPeriodsAndAPartOfOneAreReadRightToo) {
    // As many as are usual on the screen, wherever they begin, beside a mean.
    for (const double periods : {3.0, 3.25, 3.5, 4.0, 4.5, 5.5}) {
        for (const double phase : {0.0, 0.125, 0.25, 0.375, 0.5, 0.625, 0.75, 0.875}) {
            const auto points = points_of_signal(
                [&](double t) { return 30.0 + 200.0 * sine_of(periods * t + phase); });
            const auto peak =
                peaks_of(spectrum_of(points, spacing_ps, SpectrumWindow::flat_top), 1).at(0);
            EXPECT_NEAR(dbv(peak.power), -16.9897, 0.03) << periods << ", " << phase;
            EXPECT_NEAR(peak.frequency, periods * line_hz, 0.02 * periods * line_hz)
                << periods << ", " << phase;
        }
    }
}

TEST(Spectrum, WindowsAreThoseOfTheBooks) {
    // Noise widths and lobes: Harris 1978, table 1; flat top as SciPy has it, 3.77.
    const std::vector<double> points(spectrum_points, 1.0);
    const auto width = [&](SpectrumWindow window) {
        return spectrum_of(points, spacing_ps, window).noise_width;
    };
    EXPECT_NEAR(width(SpectrumWindow::none), 1.0, 1e-12);
    EXPECT_NEAR(width(SpectrumWindow::hann), 1.5, 1e-9);
    EXPECT_NEAR(width(SpectrumWindow::blackman_harris), 2.0044, 1e-4);
    EXPECT_NEAR(width(SpectrumWindow::flat_top), 3.7702, 1e-4);
    const std::vector<double> hann = window_weights(SpectrumWindow::hann, 8);
    EXPECT_NEAR(hann[0], 0.0, 1e-15);
    EXPECT_NEAR(hann[2], 0.5, 1e-15);
    EXPECT_NEAR(hann[4], 1.0, 1e-15);
    EXPECT_NEAR(hann[7], hann[1], 1e-15);
}

TEST(Spectrum, ThePowersOfAllLinesAreThatOfTheSignal) {
    // Parseval's theorem, of something that is no sine.
    const auto points =
        points_of_signal([](double t) { return 100.0 * std::exp(-9.0 * t) - 17.0 * t; });
    const double mean = std::accumulate(points.begin(), points.end(), 0.0) / spectrum_points;
    double squares = 0.0;
    for (const double millivolts : points) {
        squares += (millivolts - mean) * (millivolts - mean) * 1e-6 / spectrum_points;
    }
    const Spectrum spectrum = spectrum_of(points, spacing_ps, SpectrumWindow::none);
    EXPECT_NEAR(std::accumulate(spectrum.power.begin() + 1, spectrum.power.end(), 0.0), squares,
                1e-12 * squares);
}

TEST(Spectrum, TooFewPointsHaveNone) {
    EXPECT_TRUE(spectrum_of(std::vector<double>(7, 1.0), spacing_ps, {}).power.empty());
    EXPECT_TRUE(spectrum_of(std::vector<double>(650, 1.0), 0.0, {}).power.empty());
    EXPECT_TRUE(peaks_of(Spectrum{}, 5).empty());
    EXPECT_FALSE(purity_of(Spectrum{}));
}

TEST(SpectralLines, TheHighestPeaksComeFirstWithTheirFrequencies) {
    const auto points = points_of_signal([](double t) {
        return 100.0 * sine_of(12.0 * t) + 300.0 * sine_of(80.3 * t) + 3.0 * sine_of(200.0 * t);
    });
    const Spectrum spectrum = spectrum_of(points, spacing_ps, SpectrumWindow::blackman_harris);
    const auto peaks = peaks_of(spectrum, 5);
    ASSERT_GE(peaks.size(), 3U);
    EXPECT_NEAR(peaks[0].frequency, 80.3 * line_hz, 0.01 * line_hz);
    EXPECT_NEAR(peaks[1].frequency, 12.0 * line_hz, 0.01 * line_hz);
    EXPECT_NEAR(peaks[2].frequency, 200.0 * line_hz, 0.01 * line_hz);
    EXPECT_EQ(peaks_of(spectrum, 2).size(), 2U);
}

TEST(SpectralLines, ASineBeyondTheLimitAppearsFolded) {
    // 400 of 650 periods: 75 lines above the limit of 325, so 75 below it.
    const auto points = points_of_signal([](double t) { return 100.0 * sine_of(400.0 * t); });
    const auto peaks = peaks_of(spectrum_of(points, spacing_ps, SpectrumWindow::hann), 1);
    ASSERT_EQ(peaks.size(), 1U);
    EXPECT_EQ(peaks.front().line, 250U);
}

TEST(SpectralLines, HarmonicsMakeTheDistortion) {
    // A tenth and a twentieth: the root of 0.01 + 0.0025.
    const auto points = points_of_signal([](double t) {
        return 50.0 + 200.0 * sine_of(30.2 * t) + 20.0 * sine_of(60.4 * t) +
               10.0 * sine_of(90.6 * t);
    });
    for (const SpectrumWindow window :
         {SpectrumWindow::hann, SpectrumWindow::flat_top, SpectrumWindow::blackman_harris}) {
        const auto purity = purity_of(spectrum_of(points, spacing_ps, window));
        ASSERT_TRUE(purity);
        EXPECT_EQ(purity->harmonics, 6);
        EXPECT_NEAR(purity->distortion, 0.111803, 0.0005);
    }
    // Of a sine at a third of the limit and more only the second harmonic is below it.
    const auto high = points_of_signal([](double t) { return 200.0 * sine_of(130.0 * t); });
    EXPECT_EQ(purity_of(spectrum_of(high, spacing_ps, SpectrumWindow::hann))->harmonics, 2);
    const auto higher = points_of_signal([](double t) { return 200.0 * sine_of(170.0 * t); });
    EXPECT_EQ(purity_of(spectrum_of(higher, spacing_ps, SpectrumWindow::hann))->harmonics, 1);
}

TEST(SpectralLines, TooFewPeriodsToTellHarmonicsApartHaveNoPurity) {
    const auto points = points_of_signal([](double t) { return 200.0 * sine_of(6.0 * t); });
    EXPECT_TRUE(purity_of(spectrum_of(points, spacing_ps, SpectrumWindow::hann)));
    EXPECT_FALSE(purity_of(spectrum_of(points, spacing_ps, SpectrumWindow::flat_top)));
    // Of a sine alone nothing but it is a peak: what is left are errors of rounding.
    EXPECT_EQ(peaks_of(spectrum_of(points, spacing_ps, SpectrumWindow::hann), 5).size(), 1U);
}

TEST(SpectralLines, NoiseIsTheRest) {
    // Every point 10 mV up or down by a coin: 10 mV rms under a sine of 141.42 mV rms, 23.01 dB.
    std::uint64_t chance = 1;
    auto points = points_of_signal([](double t) { return 200.0 * sine_of(30.0 * t); });
    for (double& millivolts : points) {
        chance = chance * 6364136223846793005U + 1442695040888963407U;
        millivolts += (chance >> 63U) != 0 ? 10.0 : -10.0;
    }
    for (const SpectrumWindow window : every_window) {
        const auto purity = purity_of(spectrum_of(points, spacing_ps, window));
        ASSERT_TRUE(purity);
        EXPECT_NEAR(dbv(purity->signal_to_noise), 23.01, 0.5);
    }
}

} // namespace
} // namespace kv408
