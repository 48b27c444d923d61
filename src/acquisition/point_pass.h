#pragma once

#include <chrono>
#include <cstdint>

#include "acquisition/sweep_making.h"
#include "panel/surroundings.h"
#include "state/samples.h"
#include "state/sweeps.h"

namespace kv408 {

/// Acquires point by point: one exchange per enabled channel and screen column.
class PointPass {
public:
    PointPass(const Surroundings& around, Samples& samples, Sweeps& sweeps)
        : around_(around), samples_(samples), sweeps_(sweeps) {}

    /// One pass of up to 640 points over the channels enabled at its start. Lets window messages
    /// run before each point and ends as soon as the state word is no longer `state_word::pass`.
    /// What there is then is announced as a sweep, unless the instrument waits for a trigger or did
    /// not answer, or ticks that fell into those messages have swept on.
    void sdisplay1ghzt();

private:
    /// What came of one point, or of one channel's exchange.
    enum class Outcome { taken, waiting, failed };

    /// What there is to do where a point did not come: the sweep is not whole.
    void end_without_point(Outcome outcome);
    /// Announces what has come of the channels `enabled`, all of it when `whole`.
    void end(const std::array<bool, 2>& enabled, bool whole);
    Outcome take_point(int index, const std::array<bool, 2>& enabled);
    Outcome fetch(Channel channel, int index, const PointDelay& delay);
    void show_progress(int index, std::chrono::nanoseconds start);

    Surroundings around_;
    SweepSetUp set_up_{around_};
    Samples& samples_;
    Sweeps& sweeps_;
    std::array<ChannelSweep, 2> making_; ///< by channel, the pass as far as it has come
};

} // namespace kv408
