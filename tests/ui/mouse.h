#pragma once

#include <QTest>
#include <QWidget>
#include <QWindow>

namespace kv408::ui {

/// The mouse over a shown window, by the same way that the window system's events take.
class Mouse {
public:
    /// Over the window of `widget`.
    explicit Mouse(QWidget& widget) : top_(*widget.window()) {}

    /// Goes to `place` of `widget` without a button.
    void go(const QWidget& widget, QPoint place) {
        at_ = widget.mapTo(&top_, place);
        QTest::mouseMove(top_.windowHandle(), at_);
    }

    /// Presses the left button at `place` of `widget`.
    void press(const QWidget& widget, QPoint place, Qt::KeyboardModifiers modifiers = {}) {
        go(widget, place);
        QTest::mousePress(top_.windowHandle(), Qt::LeftButton, modifiers, at_);
    }

    /// Drags by `distance` in steps of at most 5 units.
    void drag(QPoint distance) {
        const QPoint from = at_;
        const int steps = std::max(1, distance.manhattanLength() / 5);
        for (int step = 1; step <= steps; ++step) {
            at_ = from + distance * step / steps;
            QTest::mouseMove(top_.windowHandle(), at_);
        }
    }

    /// Lets go of the left button.
    void release() { QTest::mouseRelease(top_.windowHandle(), Qt::LeftButton, {}, at_); }

private:
    QWidget& top_;
    QPoint at_;
};

} // namespace kv408::ui
