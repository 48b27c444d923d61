#include "ui/left_drag.h"

#include <utility>

#include <QEvent>

namespace kv408::ui {

LeftDrag::LeftDrag(QWidget* widget, Handlers handlers)
    : QObject(widget), widget_(*widget), handlers_(std::move(handlers)) {
    widget->installEventFilter(this);
}

bool LeftDrag::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        if (mouse(static_cast<const QMouseEvent&>(*event))) {
            event->accept();
            return true;
        }
        break;
    case QEvent::Hide:
    case QEvent::EnabledChange:
    case QEvent::WindowDeactivate:
        let_go();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool LeftDrag::mouse(const QMouseEvent& event) {
    // The event's own place on the screen is rounded to whole units for some widgets.
    const QPointF place = widget_.window()->mapToGlobal(event.scenePosition());
    if (event.type() == QEvent::MouseMove) {
        const bool drags = dragging_ && event.buttons().testFlag(Qt::LeftButton);
        if (drags) {
            handlers_.move(place);
        }
        return drags;
    }
    if (event.button() != Qt::LeftButton) {
        return false;
    }
    if (event.type() == QEvent::MouseButtonRelease) {
        const bool dragged = dragging_;
        let_go();
        return dragged;
    }
    let_go();
    // Also a disabled widget's events arrive here.
    dragging_ = widget_.isEnabled() && handlers_.press(place, event.modifiers());
    return dragging_;
}

void LeftDrag::let_go() {
    if (std::exchange(dragging_, false)) {
        handlers_.release();
    }
}

} // namespace kv408::ui
