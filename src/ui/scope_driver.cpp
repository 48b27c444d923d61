#include "ui/scope_driver.h"

#include <utility>

#include "scope/parts.h"

namespace kv408::ui {

void ScopeDriver::start() {
    enter([this] { scope_.start(); });
}

void ScopeDriver::tick() {
    enter([this] { scope_.tick(); });
}

void ScopeDriver::act(const std::function<void()>& action) {
    enter([this, &action] { scope_.act(action); });
}

void ScopeDriver::act_after_events(const Control& control, std::function<void()> action) {
    if (waits_on_ != &control) {
        run_waiting();
    }
    if (!waiting_) {
        QMetaObject::invokeMethod(
            &events_, [this] { run_waiting(); }, Qt::QueuedConnection);
    }
    waits_on_ = &control;
    waiting_ = std::move(action);
}

void ScopeDriver::run_waiting() {
    waits_on_ = nullptr;
    if (const auto action = std::exchange(waiting_, {})) {
        act(action);
    }
}

void ScopeDriver::close() {
    enter([this] { scope_.close(); });
}

const CursorState& ScopeDriver::cursors() const {
    return scope_.parts().cursor_state;
}

void ScopeDriver::enter(const std::function<void()>& entry) {
    run_waiting();
    ++depth_;
    entry();
    --depth_;
    if (listener_) {
        listener_();
    }
}

} // namespace kv408::ui
