#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace kv408 {

/// Which sweeps are recorded.
struct RecordingPlan {
    std::uint64_t every = 1; ///< every n-th sweep is recorded, 1..; counts without an interval
    std::chrono::nanoseconds interval{0};   ///< above 0: one sweep in this time
    std::optional<std::uint64_t> most = {}; ///< sweeps after which it ends, 1..
};

/// Tells, sweep by sweep, which ones a recording takes.
class RecordingPace {
public:
    explicit RecordingPace(const RecordingPlan& plan) : plan_(plan) {}

    /// Whether the sweep that is complete at `now`, a time that never goes back, is to be recorded.
    /// The first is. With an interval the next is due at the next multiple of it after the first,
    /// so that a late sweep does not delay those after it.
    [[nodiscard]] bool take(std::chrono::nanoseconds now);

    /// All that the plan asked for have been taken.
    [[nodiscard]] bool over() const { return plan_.most && taken_ >= *plan_.most; }

private:
    RecordingPlan plan_;
    std::uint64_t seen_ = 0;
    std::uint64_t taken_ = 0;
    std::chrono::nanoseconds due_{0}; ///< when the next is, once one has been taken
};

} // namespace kv408
