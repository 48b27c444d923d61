#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "spectrum/spectrum.h"

namespace kv408 {

/// A sine in a spectrum.
struct SpectralPeak {
    std::size_t line = 0; ///< the highest of its lines
    double frequency =
        0.0;            ///< hertz: the mean of its lines' frequencies, weighted with their powers
    double power = 0.0; ///< of its highest line, volts rms squared
};

/// The `most` highest peaks of `spectrum`, the highest first: lines that are higher than all others
/// within the window's main lobe and at least twenty times the median of all, and not
/// more than 100 dB below the highest, which the instrument's 4096 codes never resolve. The line of
/// the mean belongs to none.
[[nodiscard]] std::vector<SpectralPeak> peaks_of(const Spectrum& spectrum, std::size_t most);

/// So many periods of a sine have to be in the sweep for its level and frequency: with fewer its
/// lines and those of the mirrored sine below zero lie on each other. From there on flat top reads
/// the level within 0.03 dB and every window the frequency within 2 %, wherever between two lines
/// the sine lies.
[[nodiscard]] double least_periods_of_level(SpectrumWindow window);

/// How clean a sine is.
struct Purity {
    SpectralPeak fundamental;
    /// Harmonics that count: the second to the `harmonics`-th, as far as they lie below the Nyquist
    /// limit; at most the sixth. 1 where none does.
    int harmonics = 1;
    /// Total harmonic distortion: the rms value of those harmonics over that of the fundamental.
    double distortion = 0.0;
    /// The fundamental's power over that of the noise: of all lines but the mean's, the
    /// fundamental's and its harmonics', taken as high under these as beside them. Infinite without
    /// any.
    double signal_to_noise = 0.0;
};

/// The line from which on a sine and its harmonics lie apart: as many of its periods have to be in
/// the sweep.
[[nodiscard]] std::size_t least_line_of_purity(SpectrumWindow window);

/// The purity of `spectrum`'s highest sine; nothing where it has none, or one below that line.
[[nodiscard]] std::optional<Purity> purity_of(const Spectrum& spectrum);

} // namespace kv408
