#pragma once

#include <functional>
#include <utility>

#include "acquisition/block_sweep.h"
#include "acquisition/point_pass.h"
#include "acquisition/set_up_upload.h"
#include "panel/surroundings.h"
#include "panel/vertical.h"

namespace kv408 {

/// The interval of the timer, milliseconds.
inline constexpr std::int32_t timer_interval_ms = 100;

/// The state machine that the 100 ms timer drives, and the Start and Stop buttons.
class StateMachine {
public:
    /// The procedures that the states run.
    struct Procedures {
        Vertical& vertical;
        SetUpUpload& upload;
        BlockSweep& block;
        PointPass& pass;
    };

    /// Connects Start and Stop.
    StateMachine(const Surroundings& around, const Procedures& procedures);

    /// One tick. With `exchange_under_way` (the tick fell into an open message box or into a point
    /// pass) it acts on no state and redraws nothing; only the hold-off countdown and the date go
    /// on.
    void Timer1_Timer(bool exchange_under_way);

    /// Sets what one tick does in the state `state_word::linearity`: a step of the run.
    void on_calibration_step(std::function<void()> step) { calibration_step_ = std::move(step); }

    /// Sets what is done when Start or Stop breaks the linearity run off, after its state has
    /// ended.
    void on_calibration_broken_off(std::function<void()> handler) {
        calibration_broken_off_ = std::move(handler);
    }

    /// Sets what follows when Start has been pressed, by whom ever.
    void on_start(std::function<void()> listener) { started_ = std::move(listener); }

    /// Start.
    void cmdstartsweep_Click();

    /// Stop.
    void cmdstop_Click();

private:
    void act_on_state();
    void set_up();
    void fetch_block(Channel channel);
    /// True when the trigger line has just had its time.
    bool count_holdoff_down();
    /// True when what was asked for during a set-up is to be drawn on this tick.
    bool drawing_due();
    /// True when a channel that is on waits for data taken with what was changed.
    [[nodiscard]] bool data_awaited() const;
    /// With Stop no data follow that a change has made the traces wait for.
    void keep_what_is_held();
    /// Goes to the state `word`; where that breaks a linearity run off, whoever asked is notified.
    void leave_for(std::string_view word);
    void show_date();
    /// Tells where no data come, and which data are old.
    void show_age();
    [[nodiscard]] bool redraw_due() const;
    void redraw();

    Surroundings around_;
    Procedures procedures_;
    std::function<void()> calibration_step_;
    std::function<void()> calibration_broken_off_;
    std::function<void()> started_;
    int ticks_owed_ = 0;        ///< for so many ticks a drawing has waited for data
    bool screen_stale_ = false; ///< the trigger line has had its time and is still to be taken off
};

} // namespace kv408
