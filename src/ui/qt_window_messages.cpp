#include "ui/qt_window_messages.h"

#include <QCoreApplication>
#include <QEvent>

namespace kv408::ui {
namespace {

/// Takes what the user does with mouse, keys or fingers away from all widgets as long as it lives;
/// closing a window is left. Qt's own way to leave such events out leaves out closing too.
class InputKeptOff : public QObject {
public:
    InputKeptOff() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::ContextMenu:
            return true;
        default:
            return false;
        }
    }
};

} // namespace

void QtWindowMessages::process_pending() {
    QCoreApplication::processEvents();
}

void QtWindowMessages::process_endings() {
    InputKeptOff no_input;
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
