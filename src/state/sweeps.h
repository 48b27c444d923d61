#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "state/sweep.h"

namespace kv408 {

/// The one place that announces finished sweeps. It keeps the last one, and the last complete one.
class Sweeps {
public:
    using Listener = std::function<void(const std::shared_ptr<const Sweep>&)>;

    /// What has come of each channel at once; null for a channel of which nothing has.
    using Parts = std::array<std::shared_ptr<const ChannelSweep>, 2>;

    Sweeps();

    /// Adds a listener. All are told of each finished sweep, in the order in which they were added.
    void on_finished(Listener listener) { listeners_.push_back(std::move(listener)); }

    /// Takes what has come at `time`, at least one part, while the channels `on` were on, and
    /// announces it.
    void finish(SweepMode mode, std::chrono::system_clock::time_point time, const Parts& parts,
                const std::array<bool, 2>& on);

    /// What was announced last; before the first sweep two channels without points, at 0 mV in
    /// every column.
    [[nodiscard]] const std::shared_ptr<const Sweep>& last() const { return last_; }

    /// The last one that was complete; null before the first.
    [[nodiscard]] const std::shared_ptr<const Sweep>& last_complete() const {
        return last_complete_;
    }

private:
    std::shared_ptr<const Sweep> last_;
    std::shared_ptr<const Sweep> last_complete_;
    std::vector<Listener> listeners_;
};

} // namespace kv408
