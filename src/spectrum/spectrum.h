#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "spectrum/spectrum_window.h"

namespace kv408 {

/// The spectrum of points that follow each other in equal steps: lines from zero on, each as far
/// from the last.
struct Spectrum {
    SpectrumWindow window = SpectrumWindow::hann;
    double step = 0.0; ///< from line to line, hertz: one over the length of the sweep
    /// Each line's power over one ohm, volts rms squared: a sine that lies on a line has the square
    /// of its rms value there, whatever the window; the first is the square of the mean, which is
    /// taken off before the others are made, so that it does not cover them. It is the mean
    /// weighted with Hann's window, which a few periods and a part of one hardly move.
    std::vector<double> power;
    /// Width of a line for noise, in steps: the lines' powers together are that many times the
    /// power of what is transformed.
    double noise_width = 1.0;

    /// The frequency of `line`, which may lie between two, hertz.
    [[nodiscard]] double frequency(double line) const { return line * step; }
};

/// The spectrum of `millivolts`, `interval` picoseconds apart, one more line than half of the
/// points: up to the Nyquist limit of 1 / (2 interval); what the signal has above it is folded in
/// below. Empty without at least eight points and an interval.
[[nodiscard]] Spectrum spectrum_of(std::span<const double> millivolts, double interval,
                                   SpectrumWindow window);

/// `power` in decibels above a sine of 1 V rms; the least is -400.
[[nodiscard]] double dbv(double power);

/// `power` in decibels above 1 mW in 50 ohms: 13.01 more.
[[nodiscard]] double dbm(double power);

} // namespace kv408
