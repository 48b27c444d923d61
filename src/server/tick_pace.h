#pragma once

#include <chrono>

namespace kv408 {

/// When the program's timer ticks: every 100 ms. A tick that is due while another one lasts is
/// lost, and so is one that would come before the instrument can have sent what the last one has
/// asked for.
class TickPace {
public:
    static constexpr std::chrono::nanoseconds interval = std::chrono::milliseconds(100);
    /// How long the instrument is given to send a block.
    static constexpr std::chrono::nanoseconds answer = std::chrono::milliseconds(50);

    /// The first tick is due an interval after `now`.
    explicit TickPace(std::chrono::nanoseconds now) : next_(now + interval) {}

    /// Whether a tick is due.
    [[nodiscard]] bool due(std::chrono::nanoseconds now) const { return now >= next_; }

    /// How long that still lasts; 0 or less where one is due.
    [[nodiscard]] std::chrono::nanoseconds left(std::chrono::nanoseconds now) const {
        return next_ - now;
    }

    /// A tick has ended `now`; `asked` says whether it may have left something asked for.
    void ticked(std::chrono::nanoseconds now, bool asked) {
        next_ += interval;
        if (!asked) {
            next_ = next_ < now ? now : next_;
            return;
        }
        while (next_ < now + answer) {
            next_ += interval;
        }
    }

private:
    std::chrono::nanoseconds next_;
};

} // namespace kv408
