#pragma once

#include <vector>

#include <QMessageBox>
#include <QPointer>

#include "host/message_boxes.h"

namespace kv408::ui {

/// Message boxes on the screen, over the window, which can only be closed meanwhile. A box belongs
/// to the one of its windows that the person is at, which has the focus again after it.
class QtMessageBoxes : public MessageBoxes {
public:
    /// Sets the main window, which the boxes or the windows that they belong to belong to; without
    /// one they stand alone.
    void set_window(QWidget* window) { window_ = window; }

    MessageAnswer show(const Message& message) override;

    /// Closes every open box without an answer.
    void dismiss();

private:
    QPointer<QWidget> window_;
    std::vector<QMessageBox*> open_;
};

} // namespace kv408::ui
