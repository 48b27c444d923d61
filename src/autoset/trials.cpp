#include "autoset/trials.h"

#include <array>

#include "autoset/plan.h"
#include "state/samples.h"
#include "state/trigger_state.h"

namespace kv408 {
namespace {

/// Distances of the levels from 0 V that are tried, millivolts; one takes 0.3 s. Each is five times
/// the one below, so a signal of more than 5 mV that reaches beyond 0 V by up to three quarters of
/// its height (then its far end is five times as far from 0 V as its near one) meets one of them
/// below 1.5 V, and so does every signal that comes across 0.5 V. 1.5 V is for clocks that a
/// channel could not show. First come those that most signals meet.
constexpr std::array tried_levels_mv = {20, 100, 4, 500, 1500};

std::int32_t wheel_of_level(std::int32_t millivolts) {
    return (zero_volt_code + millivolts) / codes_per_wheel_step;
}

} // namespace

std::vector<Trial> trials_of(const Trial& selected) {
    std::vector<Trial> trials;
    const std::array sources = {selected.source, other(selected.source)};
    if (selected.wheel != wheel_of_level(0)) {
        trials.push_back(selected);
    }
    for (const Channel source : sources) {
        trials.push_back({.source = source, .wheel = wheel_of_level(0)});
    }
    for (const Channel source : sources) {
        for (const std::int32_t level : tried_levels_mv) {
            trials.push_back({.source = source, .wheel = wheel_of_level(level)});
            trials.push_back({.source = source, .wheel = wheel_of_level(-level)});
        }
    }
    return trials;
}

std::string words_of(const Trial& trial) {
    const std::int32_t level = trial.wheel * codes_per_wheel_step - zero_volt_code;
    return name_of_source(trial.source) + " at " + std::to_string(level) + " mV";
}

} // namespace kv408
