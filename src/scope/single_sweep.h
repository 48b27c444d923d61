#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "panel/controls.h"
#include "scope/sweep_watch.h"

namespace kv408 {

struct Parts;

/// The entries of the menu "Tools", "Sweep".
struct SweepControls {
    Button mnustart{"mnustart"};   ///< presses Start
    Button mnustop{"mnustop"};     ///< presses Stop
    Button mnusingle{"mnusingle"}; ///< one whole new sweep, and Stop
};

/// Single sweeps: Start, and Stop as soon as each channel that is on has come whole and new.
class SingleSweep {
public:
    /// What has been begun.
    struct State {
        bool under_way = false; ///< a sweep is waited for
        bool stops = false;     ///< after it; nobody has pressed Start since
    };

    /// What follows the end: whether the sweep has come, or somebody has pressed Stop.
    using Done = std::function<void(bool came)>;
    using Waiting = std::shared_ptr<const Done>;

    /// Works on `parts`, which own it.
    explicit SingleSweep(Parts& parts);
    SingleSweep(const SingleSweep&) = delete;
    SingleSweep& operator=(const SingleSweep&) = delete;

    [[nodiscard]] SweepControls& controls() { return controls_; }

    /// Watches for the sweep that is taken with the set-up as it is.
    [[nodiscard]] SweepWatch& watch() { return watch_; }
    [[nodiscard]] const SweepWatch& watch() const { return watch_; }

    /// Begins one; with no channel on it does nothing and gives false.
    bool begin();

    /// What was begun is of no interest any more; sweeping goes on as it does.
    void forget() { state_ = {}; }

    [[nodiscard]] const State& state() const { return state_; }

    /// Goes on with what was begun on another program's instrument.
    void carry_on(const State& state) { state_ = state; }

    /// Start has been pressed, by whom ever: nothing is stopped any more.
    void started() { state_.stops = false; }

    /// What follows a tick: ends what was begun once its sweep has come.
    void tick_over();

    /// Sets what follows the end, as long as the result is kept.
    [[nodiscard]] Waiting on_done(Done done) {
        auto waiting = std::make_shared<const Done>(std::move(done));
        done_ = waiting;
        return waiting;
    }

private:
    Parts& parts_;
    SweepControls controls_;
    SweepWatch watch_;
    State state_;
    std::weak_ptr<const Done> done_;
};

} // namespace kv408
