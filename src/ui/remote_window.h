#pragma once

#include <QDialog>
#include <QMainWindow>
#include <QPointer>

#include "remote/remote_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The remote control window on the screen, modeless over its owner.
class RemoteWindow : public QDialog {
public:
    /// Shows the controls of `dialog`; both outlive the window.
    RemoteWindow(RemoteDialog& dialog, ScopeDriver& driver, QWidget* owner);
};

/// Remote control in the main window: its window, made when it is opened first, the text that tells
/// of clients, and the lock of the panel.
class RemoteInWindow : public QObject {
public:
    /// For the main window `owner`, which keeps its part `plot` in sight. All of it outlives this.
    RemoteInWindow(RemoteControl& control, MessageBoxes& boxes, ScopeDriver& driver,
                   QMainWindow& owner, QWidget& plot);

    /// Start-up is complete: clients may operate `scope`.
    void attach(Scope& scope);

    /// Runs what clients have sent.
    void serve();

    /// What follows each tick.
    void tick_over();

    /// Ends it: no socket is left, and the window is closed.
    void end();

    /// Its dialog.
    [[nodiscard]] RemoteDialog& dialog() { return dialog_; }

private:
    void show_window();
    void lock(bool locked);

    RemoteControl& control_;
    ScopeDriver& driver_;
    QMainWindow& owner_;
    QWidget& plot_;
    RemoteDialog dialog_;
    QPointer<QWidget> window_;
    bool locked_ = false;
    bool serving_ = false; ///< what acts is a client
};

} // namespace kv408::ui
