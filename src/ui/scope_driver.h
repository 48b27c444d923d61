#pragma once

#include <functional>
#include <string>

#include <QObject>

#include "panel/front_panel.h"
#include "scope/scope.h"
#include "state/cursor_state.h"

namespace kv408::ui {

/// The one way from the window into the program. Entries may nest, because the program lets window
/// messages run while a message box is open or a pass is under way; the window is told when each
/// of them returns.
class ScopeDriver {
public:
    /// Drives `scope`, which outlives the driver.
    explicit ScopeDriver(Scope& scope) : scope_(scope) {}

    /// Start-up of the program.
    void start();

    /// One tick of the timer.
    void tick();

    /// One user action on the controls.
    void act(const std::function<void()>& action);

    /// One user action on `control` that takes so long that others like it gather meanwhile: it
    /// comes after the events that wait in the queue, and of several given until then only the last
    /// one. Whatever else enters the program lets it go first.
    void act_after_events(const Control& control, std::function<void()> action);

    /// Shut-down of the program.
    void close();

    /// Shut-down without a box.
    void end();

    /// True while an entry has not returned.
    [[nodiscard]] bool busy() const { return scope_.busy(); }

    /// True once the program has ended.
    [[nodiscard]] bool ended() const { return scope_.ended(); }

    /// True when an exception that nobody caught has ended it.
    [[nodiscard]] bool failed() const { return failed_; }

    /// The program's controls.
    [[nodiscard]] FrontPanel& panel() { return scope_.panel(); }

    /// What the menu "Tools" opens.
    [[nodiscard]] Tools& tools() { return scope_.tools(); }

    /// Undo and Redo.
    [[nodiscard]] Undo& undo() { return scope_.undo(); }

    /// Autoset.
    [[nodiscard]] Autoset& autoset() { return scope_.autoset(); }

    /// Single sweeps.
    [[nodiscard]] SingleSweep& single() { return scope_.single(); }

    /// Dragging on and around the plot.
    [[nodiscard]] PlotMouse& plot_mouse() { return scope_.plot_mouse(); }

    /// The measuring cursors.
    [[nodiscard]] const CursorState& cursors() const;

    /// Sets what precedes each action and the shut-down that `close` is.
    void on_press(std::function<void()> listener) { pressed_ = std::move(listener); }

    /// Sets what follows each entry, once it no longer counts as busy.
    void on_return(std::function<void()> listener) { listener_ = std::move(listener); }

private:
    void press() const;
    void enter(const std::function<void()>& entry);
    void run_waiting();
    void fail(const std::string& what);

    Scope& scope_;
    bool failed_ = false;
    const Control* waits_on_ = nullptr; ///< what `waiting_` is done to
    std::function<void()> waiting_;     ///< what comes after the events, if anything
    QObject events_;                    ///< receives the event that follows them
    std::function<void()> pressed_;
    std::function<void()> listener_;
};

} // namespace kv408::ui
