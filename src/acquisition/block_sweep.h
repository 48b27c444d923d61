#pragma once

#include <array>
#include <cstdint>
#include <functional>

#include "host/clock.h"
#include "link/device_link.h"
#include "panel/front_panel.h"
#include "panel/measuring.h"
#include "panel/screen.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/samples.h"
#include "state/time_base_state.h"

namespace kv408 {

/// Fetches block sweeps: 650 points of one channel in 1300 bytes, asked for with one command.
class BlockSweep {
public:
    BlockSweep(FrontPanel& panel, AcquisitionState& acquisition, const TimeBaseState& time_base,
               const Channels& channels, Samples& samples, DeviceLink& link, Clock& clock,
               Screen& screen, Measuring& measuring)
        : panel_(panel), acquisition_(acquisition), time_base_(time_base), channels_(channels),
          samples_(samples), link_(link), clock_(clock), screen_(screen), measuring_(measuring) {}

    /// Looks once for the reply of `channel` (1 or 2): takes a whole block, notices the waiting
    /// word, or looks again on the next call; then asks for the next block and measures. The reply
    /// of an instrument that is back brings a new set-up instead.
    void sdisplaych(int channel);

    /// Forgets what was seen of a reply; a new sweep has been asked for.
    void restart() { lastrxcount_ = 0; }

    /// The last two-byte word taken from a reply.
    [[nodiscard]] std::int16_t lastword() const { return lastword_; }

private:
    void take_block(int channel);
    void convert_block(int channel);
    void take_short_reply(int channel, std::uint32_t count);
    void rearm(int channel);

    FrontPanel& panel_;
    AcquisitionState& acquisition_;
    const TimeBaseState& time_base_;
    const Channels& channels_;
    Samples& samples_;
    DeviceLink& link_;
    Clock& clock_;
    Screen& screen_;
    Measuring& measuring_;
    std::array<Byte, 5001> rxbuffer_ = {};
    std::uint32_t lastrxcount_ = 0;
    std::int16_t lastword_ = 0;
};

} // namespace kv408
