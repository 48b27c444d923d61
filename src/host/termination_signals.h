#pragma once

#include <thread>
#include <utility>

#include "host/end_requests.h"
#include "host/system_clock.h"

namespace kv408 {

/// What asks a program from outside to end, received by a thread of its own, so that it is
/// received while the program's own thread is held up; `EndRequests` tells what becomes of it.
///
/// On Linux the signals by which a session or a terminal asks (TERM, INT, HUP). One that was
/// ignored when the program was started stays ignored. PIPE is ignored.
///
/// On Windows the end of the session and what asks all windows of a process to close, as taskkill
/// does: a window that is never shown receives both.
class TerminationSignals {
public:
    /// From now on the requests are received; constructed before any other thread is started, so
    /// before the application.
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Sets what is done, also for a request that has come before; empty handlers do nothing. The
    /// former ones are no longer under way when it returns.
    void set_handlers(TerminationHandlers handlers) { requests_.set_handlers(std::move(handlers)); }

#ifdef _WIN32
    /// The class that the window is of; for those that look for it.
    static constexpr const wchar_t* window_class = L"Kv408EndRequests";
#endif

private:
    void watch();
    [[noreturn]] static void end_process();

    SystemClock clock_;
    EndRequests requests_{clock_, end_process};
#ifdef _WIN32
    struct Window;
    /// The session ends the process when this returns: gives the program its time, then saves.
    void wait_for_end();
    void* stop_ = nullptr; ///< an event: the watch is to end
#else
    int signals_ = -1; ///< where waiting signals are read
    int stop_ = -1;    ///< readable once the watch is to end
#endif
    std::thread watcher_;
};

} // namespace kv408
