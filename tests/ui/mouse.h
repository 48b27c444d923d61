#pragma once

#include <QTest>
#include <QWheelEvent>
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

    /// Turns its wheel by `notches`, away from the user where positive, over the middle of
    /// `widget`.
    void turn_wheel(const QWidget& widget, int notches) {
        go(widget, widget.rect().center());
        const QPoint turned(0, notches * QWheelEvent::DefaultDeltasPerStep);
        QWheelEvent event(at_, top_.mapToGlobal(at_), {}, turned, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&event);
        // Sending it would make it one of the program's own again.
        qApp->notify(top_.windowHandle(), &event);
    }

private:
    QWidget& top_;
    QPoint at_;
};

} // namespace kv408::ui
