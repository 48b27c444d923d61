#include "spectrum/spectrum_window.h"

#include <cmath>
#include <numbers>
#include <span>

namespace kv408 {
namespace {

constexpr std::array hann_terms = {0.5, 0.5};
constexpr std::array flat_top_terms = {0.21557895, 0.41663158, 0.277263158, 0.083578947,
                                       0.006947368};
constexpr std::array blackman_harris_terms = {0.35875, 0.48829, 0.14128, 0.01168};
constexpr std::array no_terms = {1.0};

/// The coefficients of cosines of 0, 1, 2... periods, whose signs alternate.
std::span<const double> terms_of(SpectrumWindow window) {
    switch (window) {
    case SpectrumWindow::hann:
        return hann_terms;
    case SpectrumWindow::flat_top:
        return flat_top_terms;
    case SpectrumWindow::blackman_harris:
        return blackman_harris_terms;
    case SpectrumWindow::none:
        break;
    }
    return no_terms;
}

} // namespace

std::vector<double> window_weights(SpectrumWindow window, std::size_t points) {
    const std::span<const double> terms = terms_of(window);
    std::vector<double> weights(points);
    for (std::size_t point = 0; point < points; ++point) {
        const double angle =
            2.0 * std::numbers::pi * static_cast<double>(point) / static_cast<double>(points);
        double sign = 1.0;
        for (std::size_t term = 0; term < terms.size(); ++term) {
            weights[point] += sign * terms[term] * std::cos(static_cast<double>(term) * angle);
            sign = -sign;
        }
    }
    return weights;
}

std::size_t lobe_lines(SpectrumWindow window) {
    return terms_of(window).size();
}

} // namespace kv408
