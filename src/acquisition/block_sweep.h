#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "acquisition/sweep_making.h"
#include "panel/surroundings.h"
#include "state/samples.h"
#include "state/sweeps.h"

namespace kv408 {

/// Fetches block sweeps: 650 points of one channel in 1300 bytes, asked for with one command.
class BlockSweep {
public:
    BlockSweep(const Surroundings& around, Samples& samples, Sweeps& sweeps)
        : around_(around), samples_(samples), sweeps_(sweeps) {}

    /// Looks once for the reply of `channel`: takes a whole block, notices the waiting
    /// word, or looks again on the next call; then asks for the next block, and announces the sweep
    /// that has come, or measures the last one once more. The reply of an instrument that is back
    /// brings a new set-up instead.
    void sdisplaych(Channel channel);

    /// Forgets what was seen of a reply; a new sweep has been asked for.
    void restart() { lastrxcount_ = 0; }

    /// Whether a single word has come of the reply that is awaited: the instrument waits for its
    /// trigger, or has just begun to send.
    [[nodiscard]] bool one_word_came() const { return lastrxcount_ == 2; }

    /// The last two-byte word taken from a reply.
    [[nodiscard]] std::int16_t lastword() const { return lastword_; }

private:
    /// Takes the block that `count` bytes begin with.
    void take_block(Channel channel, std::uint32_t count);
    /// Takes the block into the samples of `channel`; the result is its sweep, `alone` or not.
    [[nodiscard]] std::shared_ptr<const ChannelSweep> convert_block(Channel channel, bool alone);
    void take_short_reply(Channel channel, std::uint32_t count);
    void rearm(Channel channel);
    /// Asks for the block after that of `channel`.
    void ask_for_next(Channel channel);

    Surroundings around_;
    SweepSetUp set_up_{around_};
    Samples& samples_;
    Sweeps& sweeps_;
    std::array<Byte, 5001> rxbuffer_ = {};
    std::uint32_t lastrxcount_ = 0;
    std::int16_t lastword_ = 0;
};

} // namespace kv408
