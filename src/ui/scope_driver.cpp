#include "ui/scope_driver.h"

#include <exception>
#include <iostream>
#include <utility>

#include "host/shown_text.h"
#include "scope/parts.h"

namespace kv408::ui {

void ScopeDriver::start() {
    enter([this] { scope_.start(); });
}

void ScopeDriver::tick() {
    enter([this] { scope_.tick(); });
}

void ScopeDriver::press() const {
    if (pressed_) {
        pressed_();
    }
}

void ScopeDriver::act(const std::function<void()>& action) {
    press();
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
    press();
    enter([this] { scope_.close(); });
}

const CursorState& ScopeDriver::cursors() const {
    return scope_.parts().cursor_state;
}

void ScopeDriver::end() {
    enter([this] { scope_.end(); });
}

void ScopeDriver::enter(const std::function<void()>& entry) {
    run_waiting();
    try {
        entry();
    } catch (const std::exception& error) {
        fail(error.what());
    } catch (...) {
        fail("unknown");
    }
    if (listener_) {
        listener_();
    }
}

/// No exception comes through the event loop.
void ScopeDriver::fail(const std::string& what) {
    failed_ = true;
    scope_.abandon();
    std::cerr << "Kv408 has ended because of an error: " << shown_line(what) << std::endl;
}

} // namespace kv408::ui
