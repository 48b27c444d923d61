#pragma once

#include <chrono>

#include "host/clock.h"

namespace kv408 {

/// Decides which late answers bring a set-up. After a first late answer the instrument may have
/// been off, so it is set up. An answer that is late again is no reason for another set-up: the
/// instrument may just be slow. An answer in time after that shows that it is not, and one more
/// set-up is due.
class SetUpWhenLate {
public:
    /// Something has come, `late` or in time. True when the instrument is to be set up now.
    bool take(bool late);

    /// The last answer was late, and its set-up has been brought or put off.
    [[nodiscard]] bool within_lateness() const { return within_; }

    /// The instrument has been set up for another reason.
    void forget_put_off() { put_off_ = false; }

private:
    bool within_ = false;
    bool put_off_ = false; ///< a set-up waits for something that comes in time
};

/// Judges whether the instrument was switched off meanwhile and so has lost what it was set up to.
/// It is told what the instrument is asked and what it answers, and takes the times of a clock.
class PowerWatch {
public:
    /// The shortest time in which somebody switches an instrument off and on again.
    static constexpr std::chrono::seconds shortest_off{2};

    explicit PowerWatch(const Clock& clock) : clock_(clock) {}

    /// A request for samples has gone out.
    void note_request();

    /// Nothing of the reply to a block's request is there. True, and taken for a silence, when the
    /// request has had its time.
    bool note_empty_queue();

    /// A request for samples was left unanswered.
    void note_silence();

    /// All attempts of a command were left unanswered.
    void note_no_acknowledge() { unanswered_ = true; }

    /// Something was answered.
    void note_answer();

    /// A command was acknowledged; `ranges`: it set both gain ranges, as the first of a set-up.
    void note_acknowledge(bool ranges);

    /// Whether the instrument may have lost the ranges that it acknowledged last. Off for less than
    /// two seconds counts only where it left something unanswered. While it leaves everything
    /// unanswered for longer than that, nobody knows: it is judged by when it answers again.
    [[nodiscard]] bool ranges_lost() const;

    /// To be asked when a reply to a request for samples comes. True when the instrument is to be
    /// set up and the reply means nothing: it left requests, or attempts of a command before the
    /// one that it took, unanswered for at least two seconds. Not true again as long as replies are
    /// that late, nor before a reply is shown, so that an instrument that is slow, or never takes
    /// one command, is swept all the same.
    [[nodiscard]] bool is_back();

    /// To be asked while a sweep runs and the program is entered. True when the instrument is to be
    /// set up because nothing entered for at least two seconds, as when the computer slept: what it
    /// has sent may be from before. Not true again as long as entries are that far apart.
    [[nodiscard]] bool was_away() { return away_.take(passed(entered_at_)); }

    /// To be asked while a sweep runs and the program is left. True as for `was_away`, where it was
    /// held up inside: for at least two seconds it neither entered, nor waited for the instrument
    /// in vain, nor received anything.
    [[nodiscard]] bool was_held_up() {
        return passed(entered_at_) && passed(heard_at_) && !unanswered_ && away_.take(true);
    }

    /// The program is entered or left.
    void note_entry() { entered_at_ = clock_.now(); }

private:
    [[nodiscard]] bool passed(std::chrono::nanoseconds since) const {
        return clock_.now() - since >= shortest_off;
    }

    const Clock& clock_;
    std::chrono::nanoseconds heard_at_{0};   ///< when the instrument last answered
    std::chrono::nanoseconds asked_at_{0};   ///< when samples were last asked for
    std::chrono::nanoseconds entered_at_{0}; ///< when the program was last entered or left
    bool unanswered_ = false;      ///< it has left something unanswered since it last answered
    bool ranges_doubtful_ = false; ///< it did so since it last acknowledged the ranges
    bool late_ = false;            ///< for so long that it may have been off
    bool judged_ = false;          ///< the reply to the last request has been
    SetUpWhenLate back_;
    SetUpWhenLate away_;
};

} // namespace kv408
