#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace kv408::ui {

/// The signals by which a session or a terminal asks a program to end, turned into an ordinary
/// event. On systems without them it does nothing.
class TerminationSignals {
public:
    /// From now on the signals wait; constructed before any thread is started, so before the
    /// application.
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Sets what a signal does, from the event loop; the application exists by now.
    void on_signal(const std::function<void()>& handler);

private:
    int file_ = -1; ///< where the waiting signals are read
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace kv408::ui
