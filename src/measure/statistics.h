#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "measure/measured_value.h"
#include "measure/running_statistics.h"
#include "state/measurement_state.h"
#include "state/sweep.h"

namespace kv408 {

/// What a value is to lie within, in its unit.
struct ValueLimits {
    std::optional<double> least;
    std::optional<double> greatest;

    [[nodiscard]] bool hold(double value) const {
        return !(least && value < *least) && !(greatest && value > *greatest);
    }
};

/// One measurement of one channel, over the sweeps since its statistics began.
struct MeasurementStatistics {
    std::optional<MeasuredValue> present; ///< of the last sweep; nothing while the channel is off
    RunningStatistics values;
    std::array<std::uint64_t, 2> without = {}; ///< sweeps that had none, by `NoValue`
    std::uint64_t outside = 0;                 ///< values that did not lie within the limits
};

/// Statistics of every measurement of both channels. They begin anew when what the sweeps are taken
/// with changes.
class Statistics {
public:
    /// The thresholds of a sweep are those that the sweeps before it gave, so the results of the
    /// first sweeps after a change are passed over until they have settled.
    static constexpr int settling_sweeps = 2;

    Statistics();

    /// Takes the results of `sweep`, which is complete and whose parts were measured into `state`.
    /// True when a value did not lie within its limits.
    bool take(const Sweep& sweep, const MeasurementState& state);

    /// Begins anew; the limits stay.
    void reset();

    /// Begins anew, and passes over the next sweeps until their results have settled.
    void settle();

    /// Goes on with what it has, but passes over the next sweeps until their results have settled.
    void pass_over() { settling_ = settling_sweeps; }

    /// How often they have begun anew.
    [[nodiscard]] std::uint64_t beginnings() const { return beginnings_; }

    /// Sweeps since they began.
    [[nodiscard]] std::uint64_t sweeps() const { return sweeps_; }

    /// The statistics of row `row` of `measurement_rows` of channel index `channel`.
    [[nodiscard]] const MeasurementStatistics& of(std::size_t channel, std::size_t row) const {
        return cells_.at(channel).at(row);
    }

    [[nodiscard]] const ValueLimits& limits(std::size_t channel, std::size_t row) const {
        return limits_.at(channel).at(row);
    }

    /// Sets limits; the values outside are counted anew.
    void set_limits(std::size_t channel, std::size_t row, const ValueLimits& limits);

private:
    [[nodiscard]] bool same_set_up(const Sweep& sweep) const;

    std::array<std::vector<MeasurementStatistics>, 2> cells_;
    std::array<std::vector<ValueLimits>, 2> limits_;
    std::array<std::shared_ptr<const ChannelSweep>, 2> last_; ///< null for a channel that was off
    std::uint64_t beginnings_ = 0;
    std::uint64_t sweeps_ = 0;
    int settling_ = 0; ///< sweeps that are still to be passed over
};

} // namespace kv408
