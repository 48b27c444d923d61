#pragma once

#include <array>
#include <cstdint>

#include "acquisition/sample_conversion.h"
#include "panel/surroundings.h"
#include "state/sweep.h"

namespace kv408 {

/// What a sweep is taken with.
struct SweepSetUp {
    const Surroundings& around;

    /// How the codes of `channel` are converted now.
    [[nodiscard]] Conversion conversion(Channel channel) const;

    /// Which channels are on now.
    [[nodiscard]] std::array<bool, 2> on() const;

    /// A sweep of `channel` that begins now and has no point yet.
    [[nodiscard]] ChannelSweep begin(Channel channel) const;
};

/// Adds the point that the reply word `word` stands for to `sweep`.
Sample add_point(ChannelSweep& sweep, const Conversion& conversion, std::int16_t word);

} // namespace kv408
