#pragma once

#include <array>
#include <cstddef>
#include <memory>

#include "state/sweeps.h"

namespace kv408 {

/// The parts of a sweep whose columns are `samples`, `columns_per_second` a second.
inline Sweeps::Parts parts_of(const Samples& samples, double columns_per_second) {
    Sweeps::Parts parts;
    for (std::size_t channel = 0; channel < parts.size(); ++channel) {
        ChannelSweep part;
        part.whole = true;
        part.columns = samples.at(channel);
        part.columns_per_second = columns_per_second;
        parts.at(channel) = std::make_shared<const ChannelSweep>(part);
    }
    return parts;
}

/// A sweep whose columns are `samples`, `columns_per_second` a second.
inline Sweep sweep_of(const Samples& samples, double columns_per_second) {
    Sweep sweep;
    sweep.channel = parts_of(samples, columns_per_second);
    return sweep;
}

} // namespace kv408
