#pragma once

#include <vector>

#include <QMessageBox>
#include <QPointer>

#include "host/message_boxes.h"

namespace kv408::ui {

/// Message boxes on the screen, over the window, which can only be closed meanwhile.
class QtMessageBoxes : public MessageBoxes {
public:
    /// Sets the window that the boxes belong to; without one they stand alone.
    void set_window(QWidget* window) { window_ = window; }

    MessageAnswer show(const Message& message) override;

    /// Closes every open box without an answer.
    void dismiss();

private:
    QPointer<QWidget> window_;
    std::vector<QMessageBox*> open_;
};

} // namespace kv408::ui
