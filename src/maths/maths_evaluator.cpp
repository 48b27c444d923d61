#include "maths/maths_evaluator.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "maths/curve_operations.h"
#include "state/units.h"

namespace kv408 {
namespace {

std::vector<double> volts_of(const ChannelSweep& part) {
    std::vector<double> volts(part.mv.size());
    std::transform(part.mv.begin(), part.mv.end(), volts.begin(),
                   [](double mv) { return mv / millivolts_per_volt; });
    return volts;
}

Curve curve_of(const ChannelSweep& part) {
    return {
        .first_time = part.first_time, .interval = part.time_per_point, .values = volts_of(part)};
}

double combined(MathsFunction function, double a, double b) {
    switch (function) {
    case MathsFunction::sum:
        return a + b;
    case MathsFunction::difference:
        return a - b;
    default:
        return a * b;
    }
}

} // namespace

void MathsEvaluator::define(const MathsDefinition& definition) {
    definition_ = definition;
    clear();
}

void MathsEvaluator::set_kept(std::size_t kept) {
    kept_ = std::clamp<std::size_t>(kept, 1, most_sweeps);
    if (sweeps_.size() > kept_) {
        while (sweeps_.size() > kept_) {
            sweeps_.pop_front();
        }
        compute_of_sweeps(*trace_);
    }
}

void MathsEvaluator::clear() {
    sweeps_.clear();
    say(definition_.function == MathsFunction::off ? "Off" : "No whole sweep has come yet");
}

void MathsEvaluator::say(std::string reason) {
    trace_.reset();
    reason_ = std::move(reason);
}

void MathsEvaluator::take(const Sweep& sweep, bool clipped) {
    if (definition_.function == MathsFunction::off) {
        return;
    }
    const auto missing = [&](Channel channel) {
        return !sweep.came.at(channel) || !sweep.channel.at(channel)->whole;
    };
    for (const Channel channel : {definition_.a, definition_.b}) {
        if ((channel == definition_.a || definition_.has_two_channels()) && missing(channel)) {
            sweeps_.clear();
            say(channel_label(channel) + " is not in the last sweep");
            return;
        }
    }
    const ChannelSweep& part = *sweep.channel.at(definition_.a);
    MathsTrace trace{.definition = definition_,
                     .sweep = sweep.number,
                     .first_time = part.first_time,
                     .time_per_point = part.time_per_point,
                     .columns_per_second = part.columns_per_second,
                     .averaged = part.averaged,
                     .clipped = clipped,
                     .values = {},
                     .lowest = {}};
    if (definition_.has_two_channels()) {
        take_two(sweep, std::move(trace));
    } else if (definition_.has_sweeps()) {
        collect(sweep, std::move(trace));
    } else {
        take_one(part, std::move(trace));
    }
}

void MathsEvaluator::take_two(const Sweep& sweep, MathsTrace trace) {
    const CommonPart common = common_part(curve_of(*sweep.channel.at(definition_.a)),
                                          curve_of(*sweep.channel.at(definition_.b)));
    if (common.a.empty()) {
        say("The channels have no time in common: their delays lie too far apart");
        return;
    }
    trace.first_point = common.first;
    trace.first_time += static_cast<double>(common.first) * trace.time_per_point;
    for (std::size_t index = 0; index < common.a.size(); ++index) {
        trace.values.push_back(combined(definition_.function, common.a[index], common.b[index]));
    }
    trace_ = std::make_shared<const MathsTrace>(std::move(trace));
    reason_.clear();
}

void MathsEvaluator::take_one(const ChannelSweep& part, MathsTrace trace) {
    trace.values = volts_of(part);
    const double seconds = part.time_per_point / picoseconds_per_second;
    if (definition_.function == MathsFunction::derivative) {
        if (trace.values.size() < 2) {
            say("A derivative needs two points");
            return;
        }
        trace.values = derivative_of(trace.values, seconds);
    } else if (definition_.function == MathsFunction::integral) {
        trace.values = integral_of(trace.values, seconds);
    } else {
        std::transform(trace.values.begin(), trace.values.end(), trace.values.begin(),
                       std::negate<>());
    }
    trace_ = std::make_shared<const MathsTrace>(std::move(trace));
    reason_.clear();
}

void MathsEvaluator::collect(const Sweep& sweep, MathsTrace trace) {
    const ChannelSweep& part = *sweep.channel.at(definition_.a);
    const TakenWith with{.mode = sweep.mode,
                         .points = part.mv.size(),
                         .first_time = part.first_time,
                         .time_per_point = part.time_per_point,
                         .gain = part.gain,
                         .conversion = part.conversion,
                         .trigger = part.trigger,
                         .averaged = part.averaged};
    if (with != with_) {
        sweeps_.clear();
        with_ = with;
    }
    while (sweeps_.size() >= kept_) {
        sweeps_.pop_front();
    }
    sweeps_.push_back({.volts = volts_of(part), .clipped = trace.clipped});
    compute_of_sweeps(std::move(trace));
}

/// Mean or envelope of the sweeps that are kept, with all else that `trace` says.
void MathsEvaluator::compute_of_sweeps(MathsTrace trace) {
    trace.sweeps = sweeps_.size();
    trace.clipped = std::any_of(sweeps_.begin(), sweeps_.end(),
                                [](const Kept& sweep) { return sweep.clipped; });
    trace.values = sweeps_.front().volts;
    trace.lowest.clear();
    const bool mean = definition_.function == MathsFunction::mean;
    if (!mean) {
        trace.lowest = trace.values;
    }
    for (auto sweep = sweeps_.begin() + 1; sweep != sweeps_.end(); ++sweep) {
        for (std::size_t index = 0; index < sweep->volts.size(); ++index) {
            const double volts = sweep->volts[index];
            if (mean) {
                trace.values[index] += volts;
            } else {
                trace.values[index] = std::max(trace.values[index], volts);
                trace.lowest[index] = std::min(trace.lowest[index], volts);
            }
        }
    }
    if (mean) {
        const auto count = static_cast<double>(sweeps_.size());
        for (double& value : trace.values) {
            value /= count;
        }
    }
    trace_ = std::make_shared<const MathsTrace>(std::move(trace));
    reason_.clear();
}

} // namespace kv408
