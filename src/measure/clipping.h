#pragma once

#include <array>
#include <memory>

#include "state/channel.h"
#include "state/sweep.h"

namespace kv408 {

/// At which ends of the instrument's scale a sweep lies.
struct Clipping {
    bool lowest = false;  ///< codes of 0
    bool highest = false; ///< codes of 4095

    friend bool operator==(const Clipping&, const Clipping&) = default;
};

/// At which ends the codes of `part` lie, as the instrument sent them.
[[nodiscard]] Clipping clipping_of(const ChannelSweep& part);

/// The clipping of both channels' last sweeps, each of which is looked through once.
class ClippingWatch {
public:
    /// At which ends `part` of `channel` lies.
    [[nodiscard]] Clipping look(Channel channel, const std::shared_ptr<const ChannelSweep>& part);

private:
    struct Known {
        std::shared_ptr<const ChannelSweep> part;
        Clipping clipping;
    };

    std::array<Known, 2> known_; ///< by channel
};

} // namespace kv408
