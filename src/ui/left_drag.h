#pragma once

#include <functional>

#include <QMouseEvent>
#include <QWidget>

namespace kv408::ui {

/// Turns a widget's mouse events into drags with the left button: pressed, moved, let go. What has
/// been pressed is always let go, also when the widget is hidden or disabled or its window is left
/// in the middle of a drag.
class LeftDrag : public QObject {
public:
    /// What happens. Places are on the screen, because the widget may move along.
    struct Handlers {
        /// True when the press begins a drag; false leaves the event to others.
        std::function<bool(QPointF place, Qt::KeyboardModifiers modifiers)> press;
        std::function<void(QPointF place)> move;
        std::function<void()> release;
    };

    /// Watches `widget`, which owns the watch.
    LeftDrag(QWidget* widget, Handlers handlers);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool mouse(const QMouseEvent& event);
    void let_go();

    const QWidget& widget_;
    Handlers handlers_;
    bool dragging_ = false;
};

} // namespace kv408::ui
