#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTimer>

namespace kv408::ui {

/// The message box that is open now, null without one.
inline QMessageBox* open_box() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) {
            return box;
        }
    }
    return nullptr;
}

/// Answers every message box that opens while it lives, as a person does who agrees, and keeps what
/// they said.
class BoxAnswers {
public:
    BoxAnswers() {
        QObject::connect(&look_, &QTimer::timeout, &look_, [this] { answer(); });
        look_.start(5);
    }

    QStringList texts; ///< of all boxes so far
    /// What is pressed, of the buttons that the box has; the first counts.
    QList<QMessageBox::StandardButton> agree = {QMessageBox::Ok, QMessageBox::Yes};

private:
    void answer() {
        QMessageBox* const box = open_box();
        if (box == nullptr) {
            return;
        }
        texts.append(box->text());
        for (const QMessageBox::StandardButton button : agree) {
            if (box->button(button) != nullptr) {
                box->button(button)->click();
                return;
            }
        }
    }

    QTimer look_;
};

} // namespace kv408::ui
