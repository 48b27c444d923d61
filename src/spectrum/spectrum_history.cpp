#include "spectrum/spectrum_history.h"

#include <algorithm>
#include <utility>

namespace kv408 {

void SpectrumHistory::set_kept(std::size_t kept) {
    kept_ = std::clamp<std::size_t>(kept, 1, most);
    while (spectra_.size() > kept_) {
        spectra_.pop_front();
    }
}

void SpectrumHistory::add(Spectrum spectrum) {
    if (!spectra_.empty()) {
        const Spectrum& before = spectra_.back();
        if (before.step != spectrum.step || before.window != spectrum.window ||
            before.power.size() != spectrum.power.size()) {
            clear();
        }
    }
    spectra_.push_back(std::move(spectrum));
    set_kept(kept_);
}

Spectrum SpectrumHistory::shown(SpectrumHold hold) const {
    if (spectra_.empty()) {
        return {};
    }
    Spectrum shown = spectra_.back();
    if (hold == SpectrumHold::last) {
        return shown;
    }
    for (std::size_t line = 0; line < shown.power.size(); ++line) {
        double sum = 0.0;
        double highest = 0.0;
        for (const Spectrum& spectrum : spectra_) {
            sum += spectrum.power[line];
            highest = std::max(highest, spectrum.power[line]);
        }
        shown.power[line] =
            hold == SpectrumHold::mean ? sum / static_cast<double>(spectra_.size()) : highest;
    }
    return shown;
}

} // namespace kv408
