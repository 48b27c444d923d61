#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "state/sweep.h"

namespace kv408 {

struct Parts;

/// Watches for sweeps that are taken with the present set-up: from a change of the set-up until
/// each channel that is on has come whole with the new one, a sweep is pending while the instrument
/// sweeps.
class SweepWatch {
public:
    /// Watches `parts`, which outlive it.
    explicit SweepWatch(const Parts& parts);

    /// Looks for a change; to be called after each command and before each tick.
    void look();

    /// A sweep was announced, as `Sweeps::on_finished` tells.
    void take(const std::shared_ptr<const Sweep>& sweep);

    /// A whole new sweep is wanted from now on, whatever has changed.
    void want_new();

    /// True while a whole new sweep has not come, and the instrument sweeps.
    [[nodiscard]] bool pending() const;

private:
    /// What a sweep is taken with, as far as the panel says it.
    struct SetUp {
        std::vector<std::string> texts;
        std::vector<std::int64_t> numbers;

        friend bool operator==(const SetUp&, const SetUp&) = default;
    };

    [[nodiscard]] SetUp set_up() const;

    const Parts& parts_;
    SetUp seen_;
    std::array<std::shared_ptr<const ChannelSweep>, 2> last_; ///< the parts that came last
    std::array<bool, 2> wanted_ = {true, true};               ///< by channel
    std::array<bool, 2> new_{}; ///< by channel: its last part was taken with the new set-up
    /// By channel, how many sweeps are still measured starting from the values of one that did not
    /// come alone (`ChannelSweep::alone`).
    std::array<int, 2> unsettled_ = {0, 0};
    /// The data under way were asked for before the change.
    bool old_under_way_ = false;
};

} // namespace kv408
