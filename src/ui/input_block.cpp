#include "ui/input_block.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

namespace kv408::ui {
namespace {

/// Whether `type` is what a person does to a window.
bool is_input(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

/// The widget that an event for `object` goes to: itself, that of a window of the window system, or
/// that of an action.
const QWidget* widget_of(const QObject& object) {
    if (object.isWidgetType()) {
        return static_cast<const QWidget*>(&object);
    }
    if (object.isWindowType()) {
        for (const QWidget* const top : QApplication::topLevelWidgets()) {
            if (top->windowHandle() == &object) {
                return top;
            }
        }
        return nullptr;
    }
    for (const QObject* owner = object.parent(); owner != nullptr; owner = owner->parent()) {
        if (owner->isWidgetType()) {
            return static_cast<const QWidget*>(owner);
        }
    }
    return nullptr;
}

} // namespace

InputBlock::InputBlock(QWidget* window, QWidget* dialog)
    : QObject(window), window_(window), dialog_(dialog) {
    if (window != nullptr) {
        qApp->installEventFilter(this);
    }
}

QWidget* InputBlock::front_of(QWidget* window) {
    QWidget* front = window;
    if (window != nullptr) {
        for (QObject* const child : window->children()) {
            if (const auto* const block = dynamic_cast<InputBlock*>(child)) {
                front = block->dialog_;
            }
        }
    }
    return front;
}

bool InputBlock::blocks(const QObject& watched) const {
    const QWidget* widget = widget_of(watched);
    while (widget != nullptr && widget != dialog_ && widget != window_) {
        widget = widget->parentWidget();
    }
    return widget != nullptr && widget == window_;
}

bool InputBlock::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    // The window itself may be closed; what belongs to it waits.
    const bool closes = type == QEvent::Close && watched != window_ &&
                        !(window_ && watched == window_->windowHandle());
    if ((!is_input(type) && !closes) || !blocks(*watched)) {
        return QObject::eventFilter(watched, event);
    }
    if (type == QEvent::MouseButtonPress && dialog_) {
        dialog_->raise();
        dialog_->activateWindow();
    }
    event->ignore();
    return true;
}

} // namespace kv408::ui
