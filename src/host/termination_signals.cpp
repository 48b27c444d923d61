#include "host/termination_signals.h"

#ifdef __linux__
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>
#endif

namespace kv408 {

#ifdef __linux__

namespace {

using std::chrono::seconds;

/// How long the program's own thread has to end the program.
constexpr seconds time_to_end{3};
/// How long the end of the process waits for a saving that is under way.
constexpr seconds time_to_save{2};

/// The signals that ask for an end, but for those that were ignored from the start.
sigset_t asking_signals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction action = {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_IGN) {
            sigaddset(&signals, number);
        }
    }
    return signals;
}

} // namespace

TerminationSignals::TerminationSignals() {
    std::signal(SIGPIPE, SIG_IGN);
    const sigset_t signals = asking_signals();
    if (pthread_sigmask(SIG_BLOCK, &signals, nullptr) != 0) {
        return;
    }
    signals_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    stop_ = eventfd(0, EFD_CLOEXEC);
    watcher_ = std::thread([this] { watch(); });
}

TerminationSignals::~TerminationSignals() {
    const std::uint64_t one = 1;
    if (watcher_.joinable() && ::write(stop_, &one, sizeof one) == sizeof one) {
        watcher_.join();
    }
    ::close(signals_);
    ::close(stop_);
}

void TerminationSignals::set_handlers(TerminationHandlers handlers) {
    const std::scoped_lock lock(asking_, saving_);
    ask_ = std::move(handlers.ask);
    save_ = std::move(handlers.save);
    if (has_been_asked_ && ask_) {
        ask_();
    }
}

void TerminationSignals::watch() {
    std::array<pollfd, 2> files = {{{.fd = signals_, .events = POLLIN, .revents = 0},
                                    {.fd = stop_, .events = POLLIN, .revents = 0}}};
    for (;;) {
        poll(files.data(), files.size(), milliseconds_left());
        if (files[1].revents != 0) {
            return;
        }
        hear();
        if (!asked_ || clock_.now() - asked_->first < time_to_end) {
            continue;
        }
        if (!asked_->overdue) {
            asked_->overdue = true;
            // A thread of its own: a disk that does not answer keeps no second signal waiting.
            saved_ = std::async(std::launch::async, [this] { save(); });
        }
        if (asked_->again) {
            end_process();
        }
    }
}

int TerminationSignals::milliseconds_left() const {
    if (!asked_ || asked_->overdue) {
        return -1;
    }
    const auto left = asked_->first + time_to_end - clock_.now();
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(left).count());
}

void TerminationSignals::hear() {
    signalfd_siginfo info = {};
    while (::read(signals_, &info, sizeof info) == sizeof info) {
        if (asked_) {
            asked_->again = true;
        } else {
            asked_ = Asked{.first = clock_.now()};
        }
        ask();
    }
}

void TerminationSignals::ask() {
    const std::lock_guard lock(asking_);
    has_been_asked_ = true;
    if (ask_) {
        ask_();
    }
}

void TerminationSignals::save() {
    const std::lock_guard lock(saving_);
    if (save_) {
        save_();
    }
}

void TerminationSignals::end_process() {
    saved_.wait_for(time_to_save);
    // Not by way of what runs at an ordinary exit: that may wait for the thread that is held up.
    _exit(EXIT_FAILURE);
}

#else

TerminationSignals::TerminationSignals() = default;

TerminationSignals::~TerminationSignals() = default;

void TerminationSignals::set_handlers(TerminationHandlers /*handlers*/) {}

#endif

} // namespace kv408
