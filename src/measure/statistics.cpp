#include "measure/statistics.h"

#include <algorithm>

#include "measure/measurement_rows.h"

namespace kv408 {
namespace {

/// Whether two sweeps of a channel were taken alike, so that their results can be compared.
bool taken_alike(const ChannelSweep& one, const ChannelSweep& other) {
    return one.first_time == other.first_time && one.time_per_point == other.time_per_point &&
           one.columns_per_second == other.columns_per_second &&
           one.conversion == other.conversion && one.gain == other.gain &&
           one.mv_per_division == other.mv_per_division && one.averaged == other.averaged &&
           one.trigger == other.trigger;
}

} // namespace

Statistics::Statistics() {
    for (std::size_t channel = 0; channel < cells_.size(); ++channel) {
        cells_.at(channel).resize(measurement_rows().size());
        limits_.at(channel).resize(measurement_rows().size());
    }
}

bool Statistics::same_set_up(const Sweep& sweep) const {
    for (std::size_t channel = 0; channel < last_.size(); ++channel) {
        const auto& before = last_.at(channel);
        if (sweep.came.at(channel) != (before != nullptr) ||
            (before && !taken_alike(*before, *sweep.channel.at(channel)))) {
            return false;
        }
    }
    return true;
}

bool Statistics::take(const Sweep& sweep, const MeasurementState& state) {
    if (!same_set_up(sweep)) {
        settle();
    }
    for (std::size_t channel = 0; channel < last_.size(); ++channel) {
        last_.at(channel) = sweep.came.at(channel) ? sweep.channel.at(channel) : nullptr;
    }
    if (settling_ > 0) {
        --settling_;
        return false;
    }
    ++sweeps_;
    bool outside = false;
    for (std::size_t channel = 0; channel < last_.size(); ++channel) {
        if (!last_.at(channel)) {
            continue;
        }
        for (std::size_t row = 0; row < cells_.at(channel).size(); ++row) {
            MeasurementStatistics& cell = cells_.at(channel)[row];
            cell.present = measured_value(measurement_rows()[row], state.measresults.at(channel),
                                          last_.at(channel)->columns_per_second);
            if (!cell.present->value) {
                ++cell.without.at(static_cast<std::size_t>(cell.present->why));
                continue;
            }
            cell.values.add(*cell.present->value);
            if (!limits_.at(channel)[row].hold(*cell.present->value)) {
                ++cell.outside;
                outside = true;
            }
        }
    }
    return outside;
}

void Statistics::settle() {
    reset();
    pass_over();
}

void Statistics::reset() {
    ++beginnings_;
    sweeps_ = 0;
    for (auto& cells : cells_) {
        std::fill(cells.begin(), cells.end(), MeasurementStatistics{});
    }
}

void Statistics::set_limits(std::size_t channel, std::size_t row, const ValueLimits& limits) {
    limits_.at(channel).at(row) = limits;
    cells_.at(channel).at(row).outside = 0;
}

} // namespace kv408
