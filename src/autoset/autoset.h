#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "autoset/plan.h"
#include "autoset/presses.h"
#include "autoset/signal_look.h"
#include "autoset/trials.h"
#include "autoset/users_set_up.h"
#include "host/clock.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/sweeps.h"
#include "state/trigger_state.h"

namespace kv408 {

/// The controls of Autoset.
struct AutosetControls {
    Button mnuautoset{"mnuautoset"};             ///< Tools: begins
    Button cmdAutosetCancel{"cmdAutosetCancel"}; ///< puts everything back
    Label lblAutoset{"lblAutoset"};              ///< what it does, and then what it has found
};

/// Finds the signals: a trigger source with a level, what height and period the signals of both
/// channels have, and the set-up that shows them. It presses controls between ticks and waits for
/// none of them; what was set comes back where nothing is found.
class Autoset {
public:
    /// What it works with; all outlives it.
    struct Works {
        FrontPanel& panel;
        const Channels& channels;
        const Sweeps& sweeps;
        TriggerState& trigger; ///< of which the source comes back that does not trigger
        const AcquisitionState& acquisition;
        const Clock& clock;
        /// Whether the reply to the request for a block is no more than one word yet.
        std::function<bool()> one_word;
        std::function<void()> keep;     ///< keeps the set-up that may have to come back
        std::function<void()> put_back; ///< brings it back
        /// What is set now was found. True where that makes a step of Undo, false where the set-up
        /// is the one that was kept.
        std::function<bool()> done;
    };

    /// What has become of it: `none` before the first one; `not_found` and `cancelled`, by Cancel
    /// or Stop, have put everything back.
    enum class Outcome { none, under_way, found, not_found, cancelled };

    /// Connects the controls; nothing is pressed before the first `start`.
    explicit Autoset(Works works);
    Autoset(const Autoset&) = delete;
    Autoset& operator=(const Autoset&) = delete;

    /// Its entry in the menu "Tools", and the controls of its window.
    [[nodiscard]] AutosetControls& controls() { return controls_; }

    /// The longest time that it takes.
    static constexpr std::chrono::milliseconds longest{6000};

    /// Begins; one that is under way goes on.
    void start();

    /// Ends one that is under way and puts everything back.
    void cancel();

    /// Ends one during which somebody has pressed Stop, as the next tick would.
    void end_if_stopped();

    /// True from its start until its end.
    [[nodiscard]] bool under_way() const { return outcome_ == Outcome::under_way; }

    /// What has become of the last one.
    [[nodiscard]] Outcome outcome() const { return outcome_; }

    /// What was found, by channel; it counts while `outcome` is `found`.
    [[nodiscard]] const std::array<FoundSignal, 2>& found() const { return found_; }

    /// The source that triggers; it counts while `outcome` is `found`.
    [[nodiscard]] Channel source() const { return trial_.source; }

    /// What it does or has found, in one line.
    [[nodiscard]] const std::string& line() const { return controls_.lblAutoset.caption(); }

    /// How much of `longest` has passed, per cent, 0 to 99; 100 while none is under way.
    [[nodiscard]] int progress() const;

    /// Goes on with one that is under way; to be called after each tick, when it has announced
    /// what has come.
    void tick_over();

    /// Sets what follows a change of progress, line or outcome.
    void on_change(std::function<void()> listener) { change_ = std::move(listener); }

private:
    enum class Stage { searching, looking, settling };

    using Parts = std::array<std::shared_ptr<const ChannelSweep>, 2>;

    void sweep_anew(const std::function<void()>& press);
    void try_trial();
    [[nodiscard]] bool is_small(Channel channel) const;
    void look_with(std::size_t rung);
    void look_by_other_source();
    void settle();
    void press_plan();
    void give_back(Channel channel);
    [[nodiscard]] Plan plan() const;
    [[nodiscard]] bool came(Channel channel) const;
    [[nodiscard]] bool all_came() const;
    [[nodiscard]] bool untriggered() const;
    [[nodiscard]] SignalLook own_look() const;
    [[nodiscard]] bool confirmed() const;
    [[nodiscard]] StartedBy started_by(Channel channel) const;
    void take_looks();
    void search_on();
    void look_on();
    void settle_on();
    void end_found();
    void give_up(Outcome outcome, std::string line);
    void tell(std::string line);
    [[nodiscard]] std::chrono::nanoseconds elapsed() const { return works_.clock.now() - began_; }

    Works works_;
    Presses presses_;
    AutosetControls controls_;
    std::function<void()> change_;
    Outcome outcome_ = Outcome::none;

    // Of the one that is under way.
    Stage stage_ = Stage::searching;
    std::chrono::nanoseconds began_{0};
    std::chrono::nanoseconds asked_{0}; ///< when the sweep was asked for that is awaited
    bool was_sweeping_ = false;
    UsersSetUp users_;
    std::vector<Trial> trials_;
    std::size_t next_trial_ = 0;
    Trial trial_;
    bool other_tried_ = false;
    std::optional<Trial> back_; ///< what triggered before the other source was tried
    std::size_t rung_ = 0;
    bool slow_ = false;                 ///< triggers come far apart
    std::array<bool, 2> beyond_fine_{}; ///< by channel: it has left the fine range
    Parts seen_;
    std::array<FoundSignal, 2> found_;
    Plan plan_;
    int settled_ = 0; ///< how often a plan was pressed
};

} // namespace kv408
