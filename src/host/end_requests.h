#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <mutex>
#include <optional>

#include "host/clock.h"

namespace kv408 {

/// What is done when the program is asked to end from outside. Both run on threads of their own.
struct TerminationHandlers {
    /// Asks the program's own thread to end it; runs for each request, and comes back at once.
    std::function<void()> ask;
    /// Saves what can be saved without that thread; runs once, when the program still runs 3 s
    /// after the first request.
    std::function<void()> save;
};

/// What becomes of requests from outside that the program ends. Each is passed on to the program's
/// own thread. If the program still runs 3 s after the first, what is known is saved. A second
/// request then ends the process; one that came before that moment does so at that moment.
class EndRequests {
public:
    /// `end_process` ends it at once, by way of nothing that may wait for the program's thread.
    EndRequests(const Clock& clock, std::function<void()> end_process)
        : clock_(clock), end_process_(std::move(end_process)) {}

    /// Sets what is done, also for a request that has come before; empty handlers do nothing. The
    /// former ones are no longer under way when it returns. For any thread.
    void set_handlers(TerminationHandlers handlers);

    // The rest is for the one thread that receives the requests.

    /// One more request has come.
    void hear();

    /// Does what is due by now.
    void look();

    /// How long until something is due, rounded up; -1 when only a further request can bring that
    /// about.
    [[nodiscard]] int milliseconds_left() const;

    /// Waits 2 s at most for a saving that is under way.
    void wait_for_saving() const;

private:
    void ask();
    void save();

    const Clock& clock_;
    std::function<void()> end_process_;
    std::optional<std::chrono::nanoseconds> first_; ///< when the first request came
    bool again_ = false;                            ///< another one has come
    bool overdue_ = false;                          ///< the program has had its time
    std::mutex asking_;                             ///< guards the two below
    std::function<void()> ask_;
    bool has_been_asked_ = false;
    std::mutex saving_; ///< guards the one below; another one, as saving may last
    std::function<void()> save_;
    std::future<void> saved_;
};

} // namespace kv408
