#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

#include "scope/program.h"

namespace kv408 {

/// One thing that is done while the link is broken, and how long it may take.
struct FaultStep {
    bool tick = true;                          ///< a tick of the timer, else `action`
    std::chrono::milliseconds longest{0};      ///< by the time-outs and pauses of what it sends
    std::function<void(Program&)> action = {}; ///< what is done when it is no tick
};

/// What the program is at while the link breaks.
struct FaultScenario {
    std::string name;                           ///< as a test and a row of the table are named
    std::string states;                         ///< state words it goes through
    std::function<void(Program&)> prepare = {}; ///< brings a new program there
    std::vector<FaultStep> steps;               ///< what is then done
    std::vector<int> codes;                     ///< commands that the steps send when nothing fails
    std::size_t operations = 0; ///< operations of the bridge that they take when nothing fails
    bool sweeps_on = false;     ///< sweeps on by itself once nothing is broken any more
    /// Channels whose controls send amplifier-gain frames, in order, as long as one is needed.
    std::vector<int> gain_senders = {1, 2};
};

/// Every scenario but the whole point passes.
[[nodiscard]] std::vector<FaultScenario> fault_scenarios();

/// A whole pass of points, of channel 1 alone and of both channels.
[[nodiscard]] std::vector<FaultScenario> point_pass_scenarios();

/// The scenario called `name` of either list.
[[nodiscard]] FaultScenario fault_scenario(const std::string& name);

} // namespace kv408
