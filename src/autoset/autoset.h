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
#include "host/clock.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/sweeps.h"

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
        const AcquisitionState& acquisition;
        const Clock& clock;
        /// Whether the reply to the request for a block is no more than one word yet.
        std::function<bool()> one_word;
        std::function<void()> keep;     ///< keeps the set-up that may have to come back
        std::function<void()> put_back; ///< brings it back
        std::function<void()> done;     ///< what was set is a step of its own
    };

    /// What has become of it.
    enum class Outcome { none, under_way, found, not_found, cancelled };

    explicit Autoset(Works works);
    Autoset(const Autoset&) = delete;
    Autoset& operator=(const Autoset&) = delete;

    [[nodiscard]] AutosetControls& controls() { return controls_; }

    /// The longest time that it takes.
    static constexpr std::chrono::milliseconds longest{6000};

    /// Begins; one that is under way goes on.
    void start();

    /// Ends one that is under way and puts everything back.
    void cancel();

    [[nodiscard]] bool under_way() const { return outcome_ == Outcome::under_way; }
    [[nodiscard]] Outcome outcome() const { return outcome_; }

    /// What was found, by channel, and the source that triggers.
    [[nodiscard]] const std::array<FoundSignal, 2>& found() const { return found_; }
    [[nodiscard]] Channel source() const { return trial_.source; }

    /// What it does or has found, in one line.
    [[nodiscard]] const std::string& line() const { return controls_.lblAutoset.caption(); }

    /// How far it is, 0 to 100.
    [[nodiscard]] int progress() const;

    /// What follows a tick.
    void tick_over();

    /// Sets what follows a change of all that.
    void on_change(std::function<void()> listener) { change_ = std::move(listener); }

private:
    enum class Stage { searching, looking, settling };

    /// A source and a level that may trigger.
    struct Trial {
        Channel source = ch1;
        std::int32_t wheel = 512; ///< the wheel's value for the level
    };

    using Parts = std::array<std::shared_ptr<const ChannelSweep>, 2>;

    void list_trials();
    void sweep_anew(const std::function<void()>& press);
    void try_trial();
    [[nodiscard]] bool is_small(Channel channel) const;
    void look_with(std::size_t rung);
    void look_by_other_source();
    void settle();
    void press_plan();
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
    void end(Outcome outcome, std::string line);
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
    std::string tab_;                ///< what the wheel turned
    std::int32_t users_timeout_ = 0; ///< microseconds
    std::vector<Trial> trials_;
    std::size_t next_trial_ = 0;
    Trial trial_;
    bool other_tried_ = false;
    std::optional<Trial> back_; ///< what triggered before the other source was tried
    std::size_t rung_ = 0;
    bool slow_ = false; ///< triggers come far apart
    Parts seen_;
    std::array<FoundSignal, 2> found_;
    Plan plan_;
    int settled_ = 0; ///< how often a plan was pressed
};

} // namespace kv408
