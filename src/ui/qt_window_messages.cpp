#include "ui/qt_window_messages.h"

#include <QCoreApplication>

namespace kv408::ui {

void QtWindowMessages::process_pending() {
    QCoreApplication::processEvents();
}

void QtWindowMessages::repaint(std::string_view control_name) {
    const QString name =
        QString::fromUtf8(control_name.data(), static_cast<qsizetype>(control_name.size()));
    if (auto* const widget = window_ ? window_->findChild<QWidget*>(name) : nullptr) {
        widget->repaint();
    }
}

} // namespace kv408::ui
