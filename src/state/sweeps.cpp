#include "state/sweeps.h"

namespace kv408 {

Sweeps::Sweeps() {
    Sweep none;
    none.channel.fill(std::make_shared<const ChannelSweep>());
    last_ = std::make_shared<const Sweep>(std::move(none));
}

void Sweeps::finish(SweepMode mode, std::chrono::system_clock::time_point time, const Parts& parts,
                    const std::array<bool, 2>& on) {
    Sweep next = *last_;
    if (next.complete) {
        ++next.number;
        next.came = {};
    }
    next.mode = mode;
    next.time = time;
    next.complete = on[0] || on[1];
    for (std::size_t channel = 0; channel < parts.size(); ++channel) {
        if (parts.at(channel)) {
            next.channel.at(channel) = parts.at(channel);
            next.came.at(channel) = parts.at(channel)->whole;
        }
        next.came.at(channel) = next.came.at(channel) && on.at(channel);
        next.complete = next.complete && next.came.at(channel) == on.at(channel);
    }
    last_ = std::make_shared<const Sweep>(std::move(next));
    if (last_->complete) {
        last_complete_ = last_;
    }
    // A copy: a listener may add another one, or begin a sweep of its own.
    const std::shared_ptr<const Sweep> finished = last_;
    for (const Listener& listener : listeners_) {
        listener(finished);
    }
}

} // namespace kv408
