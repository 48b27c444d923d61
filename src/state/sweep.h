#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "state/channel_state.h"
#include "state/samples.h"
#include "state/time_base_state.h"
#include "state/trigger_state.h"

namespace kv408 {

/// How the points of a sweep are fetched.
enum class SweepMode {
    block, ///< all points of a channel with one command
    point, ///< each point with a command of its own
};

/// How the instrument's codes become millivolts at the input.
struct Conversion {
    bool inverted = false;     ///< "Invert" is checked
    double atten = 1.0 / 6.0;  ///< millivolts per code in the channel's range
    double vtfactor = 1.0;     ///< 2.0 with "Input Via Trigger"
    std::int16_t swoffset = 0; ///< correction that is added to each code

    friend bool operator==(const Conversion&, const Conversion&) = default;
};

/// One channel's part of a sweep: what came, and what it was taken with.
struct ChannelSweep {
    /// The codes as the instrument sent them, point by point: 650 of a block, 640 of a pass, fewer
    /// of a pass that was broken off, none before the first sweep.
    std::vector<std::int16_t> codes;
    std::vector<double> mv; ///< the same points in millivolts at the input
    /// Of the first point, after the trigger, picoseconds: the delay in a block, one step in a
    /// pass.
    double first_time = 0.0;
    double time_per_point = 0.0; ///< picoseconds
    bool whole = false;          ///< all points came
    /// Nothing else waited with a block. Else the rest of a reply that was broken off may stand in
    /// front of it: a block that is asked for again ends the one before, but not what of that had
    /// come between emptying the queue and the request.
    bool alone = true;
    Conversion conversion;        ///< as the sweep began
    std::int16_t gain = 0;        ///< range, `high_gain` or `low_gain`
    double mv_per_division = 0.0; ///< millivolts per division that were selected
    double position = 0.0;        ///< of the zero line, divisions above the centre of the screen
    double delay = 0.0;           ///< as it was sent, picoseconds; a pass begins at the trigger
    bool averaged = false;        ///< with "Filter Avg."
    TriggerSetting trigger;       ///< its level with "Input Via Trigger" taken in

    /// The points as they stand on the screen, columns 1..640: a block's are stretched over it by
    /// showing some of them twice or more; beyond the end of a pass that was broken off stand those
    /// of the sweep before.
    SampleBuffer columns;
    double columns_per_second = TimeBaseState{}.samplerate;
};

/// A finished sweep. It never changes; who needs it longer shares it.
struct Sweep {
    /// Counts from 1. The parts of both channels have the same number, and come one after the other
    /// in blocks: each is announced, the last with `complete`.
    std::uint64_t number = 1;
    bool complete = false;      ///< each channel that is on has come whole with this number
    std::array<bool, 2> came{}; ///< by channel: its part belongs to this number
    std::chrono::system_clock::time_point time{}; ///< when the newest part had come
    SweepMode mode = SweepMode::block;            ///< of the newest part
    /// By channel its newest part, never null; where it did not come, that of a sweep before.
    std::array<std::shared_ptr<const ChannelSweep>, 2> channel;
};

} // namespace kv408
