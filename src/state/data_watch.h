#pragma once

#include <chrono>
#include <optional>

namespace kv408 {

/// Watches whether a sweep that runs still brings data. All times are those of one clock.
class DataWatch {
public:
    using Time = std::chrono::nanoseconds;

    /// Points of a point-by-point pass.
    static constexpr int points_per_pass = 640;

    /// What the acquisition is doing.
    struct Doing {
        bool sweeps;    ///< a sweep runs, so that data are to come
        bool by_points; ///< point by point, which takes as long as it takes
    };

    /// A whole sweep has come.
    void take_sweep(Time now);

    /// The instrument has answered that it waits for a trigger.
    void take_answer(Time now) { take_sweep(now); }

    /// The instrument has taken a set-up, after which data are awaited anew. A silence that is
    /// shown already goes on.
    void take_set_up(Time now);

    /// A point-by-point pass begins, and its point `index` (1..640) has come: from these follows
    /// how long a pass takes.
    void begin_pass(Time now) { pass_began_ = now; }
    void take_point(Time now, int index);

    /// Looks at the time: silence is reported from one second without data on, of a point-by-point
    /// acquisition from the time of two passes on where that is longer.
    void look(Time now, const Doing& doing);

    /// For how long no data have come, in whole seconds, at the last look; nothing as long as that
    /// is usual and where no sweep runs.
    [[nodiscard]] std::optional<std::chrono::seconds> silence() const { return silence_; }

private:
    std::optional<Time> since_; ///< since when data are awaited; nothing where no sweep runs
    std::optional<std::chrono::seconds> silence_;
    Time pass_began_{0};
    Time pass_takes_{0}; ///< how long a pass takes, 0 before the first point
};

} // namespace kv408
