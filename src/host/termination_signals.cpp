#include "host/termination_signals.h"

#include <array>
#include <cstdlib>

#ifdef _WIN32
#include <windows.h>
#else
#include <csignal>
#include <cstdint>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>
#endif

namespace kv408 {

#ifdef _WIN32

/// The window that is never shown. It belongs to the watching thread.
struct TerminationSignals::Window {
    explicit Window(TerminationSignals& owner) {
        WNDCLASSW kind = {};
        kind.lpfnWndProc = answer;
        kind.hInstance = GetModuleHandleW(nullptr);
        kind.lpszClassName = window_class;
        RegisterClassW(&kind); // is there already for a second one
        handle = CreateWindowExW(0, window_class, L"", WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr,
                                 kind.hInstance, nullptr);
        SetWindowLongPtrW(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&owner));
    }
    ~Window() { DestroyWindow(handle); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Answers `message`.
    static LRESULT CALLBACK answer(HWND window, UINT message, WPARAM first, LPARAM second) {
        auto* const owner =
            reinterpret_cast<TerminationSignals*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (owner != nullptr && message == WM_CLOSE) {
            owner->requests_.hear();
            return 0;
        }
        if (owner != nullptr && message == WM_ENDSESSION && first != 0) {
            owner->requests_.hear();
            owner->wait_for_end();
            return 0;
        }
        return DefWindowProcW(window, message, first, second);
    }

    HWND handle;
};

TerminationSignals::TerminationSignals()
    : stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)), watcher_([this] { watch(); }) {}

TerminationSignals::~TerminationSignals() {
    SetEvent(stop_);
    watcher_.join();
    CloseHandle(stop_);
}

void TerminationSignals::watch() {
    const Window window(*this);
    for (;;) {
        const int left = requests_.milliseconds_left();
        const DWORD woken = MsgWaitForMultipleObjects(
            1, &stop_, FALSE, left < 0 ? INFINITE : static_cast<DWORD>(left), QS_ALLINPUT);
        if (woken == WAIT_OBJECT_0 || woken == WAIT_FAILED) {
            return;
        }
        MSG message = {};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
            DispatchMessageW(&message);
        }
        requests_.look();
    }
}

void TerminationSignals::wait_for_end() {
    const int left = requests_.milliseconds_left();
    if (left < 0 || WaitForSingleObject(stop_, static_cast<DWORD>(left)) == WAIT_TIMEOUT) {
        requests_.look();
        requests_.wait_for_saving();
    }
}

void TerminationSignals::end_process() {
    TerminateProcess(GetCurrentProcess(), EXIT_FAILURE);
    std::abort(); // which is not reached
}

#else

namespace {

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

void TerminationSignals::watch() {
    std::array<pollfd, 2> files = {{{.fd = signals_, .events = POLLIN, .revents = 0},
                                    {.fd = stop_, .events = POLLIN, .revents = 0}}};
    for (;;) {
        poll(files.data(), files.size(), requests_.milliseconds_left());
        if (files[1].revents != 0) {
            return;
        }
        signalfd_siginfo info = {};
        while (::read(signals_, &info, sizeof info) == sizeof info) {
            requests_.hear();
        }
        requests_.look();
    }
}

void TerminationSignals::end_process() {
    // Not by way of what runs at an ordinary exit: that may wait for the thread that is held up.
    _exit(EXIT_FAILURE);
}

#endif

} // namespace kv408
