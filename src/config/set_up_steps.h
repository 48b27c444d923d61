#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "config/set_up.h"

namespace kv408 {

/// The set-ups that the panel has gone through, and at which of them it is: what Undo and Redo walk
/// along.
class SetUpSteps {
public:
    /// Steps that can be taken back at most; of more the oldest are forgotten.
    static constexpr std::size_t most = 100;

    /// Changes of the same things that follow each other within this time are one step: the notches
    /// of one turn of a wheel, the letters of one number.
    static constexpr std::chrono::milliseconds one_turn{1000};

    /// Says differences in words, for people.
    using Words = std::function<std::string(const std::map<std::string, std::string>&)>;

    /// A moment at which the set-up was looked at.
    struct Moment {
        std::chrono::nanoseconds time{0}; ///< of the program's clock
        /// The number of the press of a mouse button that lasts, from 1; 0: no button is pressed.
        /// Whatever changes during one press is one step.
        std::uint64_t press = 0;
    };

    explicit SetUpSteps(Words words) : words_(std::move(words)) {}

    /// Forgets all steps and begins with the set-up `now`.
    void begin(PanelSetUp now);

    /// The panel holds `now` at `moment`: where that is something new it is a step, or belongs to
    /// the step before, and what had been taken back is forgotten. With a `name` it is always a
    /// step of its own, called so.
    void note(const PanelSetUp& now, const Moment& moment, const std::string& name = {});

    /// Goes to the set-up at `place`, 0..`count`, and gives it: 0 is the one before all steps. The
    /// panel must then be brought to it.
    const PanelSetUp& go(std::size_t place);

    /// The panel, brought to the set-up at `place`, holds `now` instead, because the instrument or
    /// a range did not let it be the same.
    void put_right(PanelSetUp now) { set_ups_[place_] = std::move(now); }

    /// How many steps there are, 0..`most`.
    [[nodiscard]] std::size_t count() const { return words_of_steps_.size(); }

    /// How many of them have been taken and not taken back, 0..`count`.
    [[nodiscard]] std::size_t place() const { return place_; }

    /// What step `step`, 0..`count` - 1, has changed, in words for people.
    [[nodiscard]] const std::string& words(std::size_t step) const {
        return words_of_steps_.at(step);
    }

    /// Where the panel is.
    [[nodiscard]] const PanelSetUp& present() const { return set_ups_.at(place_); }

    /// False before the first `begin`.
    [[nodiscard]] bool begun() const { return !set_ups_.empty(); }

private:
    [[nodiscard]] bool goes_on(const std::vector<std::string>& keys, const Moment& moment) const;
    void take_step(const PanelSetUp& now);
    void go_on(const PanelSetUp& now);
    void forget_what_was_taken_back();

    Words words_;
    std::vector<PanelSetUp> set_ups_;         ///< one more than steps
    std::vector<std::string> words_of_steps_; ///< each between two set-ups
    std::size_t place_ = 0;
    bool open_ = false;                  ///< the last step may go on
    Moment last_;                        ///< of what changed last
    std::vector<std::string> last_keys_; ///< of what changed last
};

} // namespace kv408
