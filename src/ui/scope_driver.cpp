#include "ui/scope_driver.h"

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

void ScopeDriver::close() {
    enter([this] { scope_.close(); });
}

const CursorState& ScopeDriver::cursors() const {
    return scope_.parts().cursor_state;
}

void ScopeDriver::enter(const std::function<void()>& entry) {
    ++depth_;
    entry();
    --depth_;
    if (listener_) {
        listener_();
    }
}

} // namespace kv408::ui
