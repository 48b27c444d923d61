#pragma once

#include <string_view>

namespace kv408 {

/// The window system's queue, for procedures that run long on the user-interface thread.
class WindowMessages {
public:
    virtual ~WindowMessages() = default;

    /// Lets all waiting window messages run (clicks, timers, painting); returns when none waits.
    virtual void process_pending() = 0;

    /// Lets the window messages run that end the program, with painting and timers: what the user
    /// does on the controls meanwhile is lost.
    virtual void process_endings() { process_pending(); }

    /// Paints the control named `control_name` now, before the caller goes on.
    virtual void repaint(std::string_view control_name) = 0;
};

} // namespace kv408
