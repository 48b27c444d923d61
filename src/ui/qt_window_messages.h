#pragma once

#include <QPointer>
#include <QWidget>

#include "host/window_messages.h"

namespace kv408::ui {

/// The queue of the window system.
class QtWindowMessages : public WindowMessages {
public:
    /// Sets the window that holds the controls.
    void set_window(QWidget* window) { window_ = window; }

    void process_pending() override;
    void process_endings() override;
    void repaint(std::string_view control_name) override;

private:
    QPointer<QWidget> window_;
};

} // namespace kv408::ui
