#include "ui/mouse_wheel.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QSlider>
#include <QTabBar>

namespace kv408::ui {
namespace {

bool is_turned_by_wheel(const QWidget& widget) {
    return qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QSlider*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QTabBar*>(&widget) != nullptr;
}

/// Lets its parent have the mouse wheel only while that has the keyboard focus.
class WheelGate : public QObject {
public:
    explicit WheelGate(QWidget& guarded) : QObject(&guarded), guarded_(guarded) {
        guarded.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Wheel && !guarded_.hasFocus()) {
            // Qt offers an ignored one to the widgets around.
            event->ignore();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget& guarded_;
};

} // namespace

void let_wheel_turn_only_what_has_focus(QWidget& parent) {
    for (QWidget* const widget : parent.findChildren<QWidget*>()) {
        if (is_turned_by_wheel(*widget)) {
            // Before the event itself the wheel would bring the focus.
            widget->setFocusPolicy(Qt::StrongFocus);
            new WheelGate(*widget);
        }
    }
}

} // namespace kv408::ui
