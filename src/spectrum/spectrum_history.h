#pragma once

#include <cstddef>
#include <deque>

#include "spectrum/spectrum.h"

namespace kv408 {

/// What is shown of several spectra.
enum class SpectrumHold {
    last, ///< the last one
    mean, ///< of each line the mean of the powers
    peak, ///< of each line the highest power
};

/// The spectra of the last sweeps, all of the same lines.
class SpectrumHistory {
public:
    static constexpr std::size_t most = 1000;

    /// How many are kept, 1 to `most`.
    void set_kept(std::size_t kept);

    /// As set, at first 16.
    [[nodiscard]] std::size_t kept() const { return kept_; }

    /// Adds `spectrum`; one of other lines or another window begins anew.
    void add(Spectrum spectrum);

    /// Forgets all of them.
    void clear() { spectra_.clear(); }

    /// How many there are, up to `kept`.
    [[nodiscard]] std::size_t count() const { return spectra_.size(); }

    /// What `hold` makes of them; without lines where there are none.
    [[nodiscard]] Spectrum shown(SpectrumHold hold) const;

private:
    std::size_t kept_ = 16;
    std::deque<Spectrum> spectra_; ///< the last one at the back
};

} // namespace kv408
