#pragma once

#include <optional>

#include <QMouseEvent>
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
        on_pixel_.reset();
        QTest::mouseMove(top_.windowHandle(), at_);
    }

    /// Goes without a button to the pixel `pixel` of the screen's, counted from the first one of
    /// `widget`.
    void go_to_pixel(const QWidget& widget, QPoint pixel) {
        point_at(widget, pixel);
        send(QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
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

    /// Presses the left button on the pixel `pixel` of the screen's, counted from the first one of
    /// `widget`, as a screen tells it that has several pixels for each unit of the window.
    void press_pixel(const QWidget& widget, QPoint pixel, Qt::KeyboardModifiers modifiers = {}) {
        point_at(widget, pixel);
        send(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, modifiers);
    }

    /// Drags to such a pixel.
    void drag_to_pixel(const QWidget& widget, QPoint pixel) {
        point_at(widget, pixel);
        send(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    }

    /// Lets go of the left button.
    void release() {
        if (on_pixel_) {
            // Where it is, to the pixel: elsewhere it would be a move.
            send(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
        } else {
            QTest::mouseRelease(top_.windowHandle(), Qt::LeftButton, {}, at_);
        }
    }

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
    void point_at(const QWidget& widget, QPoint pixel) {
        const qreal ratio = top_.devicePixelRatioF();
        const QPoint first = (QPointF(widget.mapTo(&top_, QPoint())) * ratio).toPoint();
        on_pixel_ = QPointF(first + pixel) / ratio;
        at_ = on_pixel_->toPoint();
    }

    /// Sends what happens at `on_pixel_` with `button`, after which `held` are held.
    void send(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held,
              Qt::KeyboardModifiers modifiers = {}) {
        QMouseEvent event(type, *on_pixel_, *on_pixel_, top_.mapToGlobal(*on_pixel_), button, held,
                          modifiers);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(top_.windowHandle(), &event);
    }

    QWidget& top_;
    QPoint at_;
    std::optional<QPointF> on_pixel_; ///< where it was told to the pixel
};

} // namespace kv408::ui
