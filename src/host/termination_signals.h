#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <thread>

#include "host/system_clock.h"

namespace kv408 {

/// What is done when the program is asked to end from outside. Both run on threads of their own.
struct TerminationHandlers {
    /// Asks the program's own thread to end it; runs for each signal, and comes back at once.
    std::function<void()> ask;
    /// Saves what can be saved without that thread; runs once, when the program still runs 3 s
    /// after the first signal.
    std::function<void()> save;
};

/// The signals by which a session or a terminal asks a program to end (TERM, INT, HUP), received by
/// a thread of their own, so that they are heard while the program's own thread is held up. The
/// first is passed on to that thread. Where the program still runs after 3 s, what is known is
/// saved; a second signal then ends the process, one that came earlier does so at that moment. A
/// signal that was ignored when the program was started stays ignored. PIPE is ignored. On Windows
/// nothing of this exists: a session that ends tells the window.
class TerminationSignals {
public:
    /// From now on the signals wait; constructed before any other thread is started, so before the
    /// application.
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Sets what is done, also for a signal that has come before; empty handlers do nothing. The
    /// former ones are no longer under way when it returns.
    void set_handlers(TerminationHandlers handlers);

private:
#ifdef __linux__
    /// Where the program stands between the first signal and its end.
    struct Asked {
        std::chrono::nanoseconds first{0}; ///< when the first signal came
        bool again = false;                ///< another one has come
        bool overdue = false;              ///< the program has had its time
    };

    void watch();
    void hear();
    void ask();
    void save();
    [[noreturn]] void end_process();
    [[nodiscard]] int milliseconds_left() const;

    SystemClock clock_;
    int signals_ = -1;           ///< where waiting signals are read
    int stop_ = -1;              ///< readable once the watch is to end
    std::optional<Asked> asked_; ///< of the watching thread alone
    std::mutex asking_;          ///< guards the two below
    std::function<void()> ask_;
    bool has_been_asked_ = false;
    std::mutex saving_; ///< guards the one below; another one, as saving may last
    std::function<void()> save_;
    std::future<void> saved_;
    std::thread watcher_;
#endif
};

} // namespace kv408
