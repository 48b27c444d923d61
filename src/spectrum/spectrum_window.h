#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace kv408 {

/// What the points of a sweep are weighted with before they are transformed, in the order of
/// `window_names`.
enum class SpectrumWindow {
    hann,            ///< 1/2, -1/2: for most signals
    flat_top,        ///< for levels: a sine between two lines reads at most 0.01 dB too low
    blackman_harris, ///< for small signals beside large ones: side lobes of -92 dB
    none             ///< for signals of which whole periods lie in the sweep
};

inline constexpr std::array<std::string_view, 4> window_names = {"Hann", "Flat top",
                                                                 "Blackman-Harris", "None"};

/// The weights of `points` points: a sum of cosines with the period `points`, as spectra want it
/// (SciPy's `get_window` with `fftbins`). The coefficients of Blackman-Harris are those of F. J.
/// Harris, "On the use of windows for harmonic analysis with the discrete Fourier transform",
/// Proc. IEEE 66 (1978), minimum 4-term; those of flat top G. D'Antona and A. Ferrero, "Digital
/// Signal Processing for Measurement Systems" (2006), p. 72.
[[nodiscard]] std::vector<double> window_weights(SpectrumWindow window, std::size_t points);

/// How many lines on each side of a sine's own belong to it: the half width of the window's main
/// lobe.
[[nodiscard]] std::size_t lobe_lines(SpectrumWindow window);

} // namespace kv408
