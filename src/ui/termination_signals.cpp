#include "ui/termination_signals.h"

#include <QSocketNotifier>

#ifdef __linux__
#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>
#endif

namespace kv408::ui {

#ifdef __linux__

TerminationSignals::TerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    if (pthread_sigmask(SIG_BLOCK, &signals, nullptr) == 0) {
        file_ = signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    }
}

TerminationSignals::~TerminationSignals() {
    notifier_.reset();
    if (file_ >= 0) {
        ::close(file_);
    }
}

void TerminationSignals::on_signal(const std::function<void()>& handler) {
    if (file_ < 0) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(file_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this, handler] {
                         signalfd_siginfo info = {};
                         if (::read(file_, &info, sizeof info) == sizeof info) {
                             handler();
                         }
                     });
}

#else

TerminationSignals::TerminationSignals() = default;

TerminationSignals::~TerminationSignals() = default;

void TerminationSignals::on_signal(const std::function<void()>& /*handler*/) {}

#endif

} // namespace kv408::ui
