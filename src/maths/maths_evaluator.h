#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "maths/maths_trace.h"
#include "state/sweep.h"

namespace kv408 {

/// Computes one trace, sweep by sweep.
class MathsEvaluator {
public:
    /// The most sweeps that mean and envelope can be of.
    static constexpr std::size_t most_sweeps = 1000;

    [[nodiscard]] const MathsDefinition& definition() const { return definition_; }

    /// Computes `definition` from the next sweep on; what there is is forgotten.
    void define(const MathsDefinition& definition);

    /// How many of the last sweeps mean and envelope are of, 1 to `most_sweeps`.
    [[nodiscard]] std::size_t kept() const { return kept_; }

    /// Sets that; where more have come the oldest are forgotten at once.
    void set_kept(std::size_t kept);

    /// Forgets all sweeps.
    void clear();

    /// Takes `sweep`, with which every channel that is on has come. Mean and envelope begin anew
    /// with one that was taken otherwise: with another time base, delay, range, correction,
    /// inversion or trigger, another averaging or number of points. `clipped` tells that a channel
    /// of the definition leaves the instrument's scale in it.
    void take(const Sweep& sweep, bool clipped = false);

    /// What was computed; null where there is nothing.
    [[nodiscard]] const std::shared_ptr<const MathsTrace>& trace() const { return trace_; }

    /// Why there is nothing, as one sentence without its point; empty where there is a trace.
    [[nodiscard]] const std::string& reason() const { return reason_; }

private:
    /// What a channel's sweep was taken with.
    struct TakenWith {
        SweepMode mode = SweepMode::block;
        std::size_t points = 0;
        double first_time = 0.0;
        double time_per_point = 0.0;
        std::int16_t gain = 0;
        Conversion conversion;
        TriggerSetting trigger;
        bool averaged = false;

        friend bool operator==(const TakenWith&, const TakenWith&) = default;
    };

    /// A sweep of mean or envelope.
    struct Kept {
        std::vector<double> volts;
        bool clipped = false;
    };

    void say(std::string reason);
    void take_two(const Sweep& sweep, MathsTrace trace);
    void take_one(const ChannelSweep& part, MathsTrace trace);
    void collect(const Sweep& sweep, MathsTrace trace);
    void compute_of_sweeps(MathsTrace trace);

    MathsDefinition definition_;
    std::size_t kept_ = 16;
    std::deque<Kept> sweeps_; ///< of mean and envelope, the oldest first
    TakenWith with_;          ///< what they were taken with
    std::shared_ptr<const MathsTrace> trace_;
    std::string reason_ = "Off";
};

} // namespace kv408
