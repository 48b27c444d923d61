#pragma once

#include <chrono>
#include <optional>

namespace kv408 {

/// Where the program stands between its start and its end.
struct ProgramState {
    bool activated = false; ///< device discovery has run in this activation cycle
    bool loaded = false;    ///< start-up is complete; drawing waits for it
    bool ended = false;     ///< the program is ending: nothing more is sent or drawn
    /// The user has given up the exchange under way: no command of it that waits for an acknowledge
    /// is sent any more, and no failure of it is shown.
    bool given_up = false;

    /// Since when settings are being taken over, on the program's clock; that may be many
    /// exchanges, between which an end is let come about. Nothing: none are.
    std::optional<std::chrono::nanoseconds> taking_over_since;
};

/// Settings are being taken over as long as it lives; within another one it changes nothing.
class TakingOver {
public:
    /// Begins at `now`, a time on the program's clock.
    TakingOver(ProgramState& program, std::chrono::nanoseconds now)
        : program_(program), around_(program.taking_over_since) {
        program.taking_over_since = around_.value_or(now);
    }
    ~TakingOver() { program_.taking_over_since = around_; }
    TakingOver(const TakingOver&) = delete;
    TakingOver& operator=(const TakingOver&) = delete;

private:
    ProgramState& program_;
    std::optional<std::chrono::nanoseconds> around_;
};

/// Thrown to unwind at once when the program ends from deep inside; it carries nothing and is
/// caught only where the window, the timer or a test enters the program.
struct ProgramEnded {};

/// Ends the program: marks it and unwinds to the entry.
[[noreturn]] inline void end_program(ProgramState& program) {
    program.ended = true;
    throw ProgramEnded{};
}

} // namespace kv408
