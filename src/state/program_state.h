#pragma once

#include <functional>

namespace kv408 {

/// Where the program stands between its start and its end.
struct ProgramState {
    bool activated = false; ///< device discovery has run in this activation cycle
    bool loaded = false;    ///< start-up is complete; drawing waits for it
    bool ended = false;     ///< the program is ending: nothing more is sent or drawn
    /// The user has given up the exchange under way: no command of it that waits for an acknowledge
    /// is sent any more, and no failure of it is told.
    bool given_up = false;

    /// Keeps what the user has set; runs before a message that ends the program is shown, so that
    /// nothing is lost while that waits for its answer. Set by whoever owns the settings.
    std::function<void()> keep_settings;

    /// Lets an end that has been asked for come about in the middle of something long, and unwinds
    /// then; empty: nothing can be asked for. Set by whoever has the window's queue.
    std::function<void()> let_end;
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
