#pragma once

#include <functional>
#include <utility>

#include <QAccessible>
#include <QWidget>

#include "panel/thumb_wheel.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// A thumb wheel seen from its edge: a ribbed cylinder that the left mouse button drags sideways.
/// The arrow keys and each notch of the mouse wheel turn it by a step, Page Up and Page Down by
/// ten, Home and End to its ends.
class WheelWidget : public QWidget {
public:
    /// The face of `wheel`, which it turns through `driver`; both outlive the widget.
    WheelWidget(ThumbWheel& wheel, ScopeDriver& driver, QWidget* parent = nullptr);

    /// The wheel behind it.
    [[nodiscard]] const ThumbWheel& wheel() const { return wheel_; }

    /// Turns the wheel to `value`, held within its range, and lets go.
    void turn_to(std::int64_t value);

    /// Sets the way by which screen readers are told a new value; Qt's own at first.
    void announce_through(std::function<void(QAccessibleEvent&)> announce) {
        announce_ = std::move(announce);
    }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void take_drags();
    void show_wheel();
    void turn(std::int32_t pixels);
    [[nodiscard]] QColor body() const;
    [[nodiscard]] QColor highlight() const;
    void paint_ribs(QPainter& painter) const;
    void paint_frame(QPainter& painter) const;

    ThumbWheel& wheel_;
    ScopeDriver& driver_;
    std::function<void(QAccessibleEvent&)> announce_ = [](QAccessibleEvent& event) {
        QAccessible::updateAccessibility(&event);
    };
    int eighths_ = 0;             ///< of a degree that the mouse wheel has turned short of a notch
    std::int32_t told_value_ = 0; ///< the value that screen readers know
};

} // namespace kv408::ui
