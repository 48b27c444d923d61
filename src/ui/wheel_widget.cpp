#include "ui/wheel_widget.h"

#include <cmath>

#include <QKeyEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QWheelEvent>

#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/left_drag.h"
#include "ui/wheel_accessible.h"

namespace kv408::ui {
namespace {

constexpr int wheel_height = 32;
constexpr int least_width = 120;
constexpr int inset = 3;           ///< of the ribs from the upper and the lower edge
constexpr int steps_per_page = 10; ///< of Page Up and Page Down
constexpr int end_alpha = 140;     ///< of black, where the cylinder turns away
constexpr double end_width = 0.22; ///< part of the width on either side that turns away

/// Of black in the lines, on the wheel's body.
constexpr int edge_alpha = 120;
constexpr int deep_alpha = 130;
constexpr int shallow_alpha = 50;

QColor black(int alpha) {
    return {0, 0, 0, alpha};
}

/// The wheel's pixel column of `on_screen`.
QPoint pixel_at(const QWidget& widget, QPointF on_screen) {
    const QPointF place = widget.mapFromGlobal(on_screen);
    return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}

} // namespace

WheelWidget::WheelWidget(ThumbWheel& wheel, ScopeDriver& driver, QWidget* parent)
    : QWidget(parent), wheel_(wheel), driver_(driver), told_value_(wheel.Value()) {
    offer_wheels_to_screen_readers();
    setObjectName(object_name(wheel));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCursor(Qt::SizeHorCursor);
    take_drags();
    keep_shown(*this, wheel_, [this] { show_wheel(); });
}

void WheelWidget::take_drags() {
    new LeftDrag(this, {.press =
                            [this](QPointF place, Qt::KeyboardModifiers /*modifiers*/) {
                                const QPoint at = pixel_at(*this, place);
                                driver_.act([&] { wheel_.mouse_down(at.x(), at.y()); });
                                setFocus(Qt::MouseFocusReason);
                                return true;
                            },
                        .move =
                            [this](QPointF place) {
                                const QPoint at = pixel_at(*this, place);
                                driver_.act(
                                    [&] { wheel_.mouse_move(left_mouse_button, at.x(), at.y()); });
                            },
                        .release = [this] { driver_.act([this] { wheel_.mouse_up(); }); }});
}

void WheelWidget::show_wheel() {
    show_common(*this, wheel_);
    update();
    if (told_value_ != wheel_.Value()) {
        told_value_ = wheel_.Value();
        QAccessibleValueChangeEvent event(this, told_value_);
        announce_(event);
    }
}

void WheelWidget::turn(std::int32_t pixels) {
    driver_.act([&] { wheel_.turn(pixels); });
}

void WheelWidget::turn_to(std::int64_t value) {
    driver_.act([&] { wheel_.turn_to(value); });
}

QSize WheelWidget::sizeHint() const {
    return {least_width, wheel_height};
}

void WheelWidget::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Right:
    case Qt::Key_Up:
        return turn(1);
    case Qt::Key_Left:
    case Qt::Key_Down:
        return turn(-1);
    case Qt::Key_PageUp:
        return turn(steps_per_page);
    case Qt::Key_PageDown:
        return turn(-steps_per_page);
    case Qt::Key_Home:
        return turn_to(wheel_.Min());
    case Qt::Key_End:
        return turn_to(wheel_.Max());
    default:
        QWidget::keyPressEvent(event);
    }
}

void WheelWidget::wheelEvent(QWheelEvent* event) {
    event->accept();
    const QPoint delta = event->angleDelta();
    const int turned = delta.y() != 0 ? delta.y() : delta.x();
    if ((turned > 0) != (eighths_ > 0)) {
        eighths_ = 0; // Turned back: what was short of a notch is void.
    }
    eighths_ += turned;
    const int notches = eighths_ / QWheelEvent::DefaultDeltasPerStep;
    eighths_ %= QWheelEvent::DefaultDeltasPerStep;
    if (notches != 0) {
        turn(notches);
    }
}

void WheelWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
    if (!isEnabled()) {
        painter.setOpacity(0.4);
    }
    painter.fillRect(rect(), body());
    paint_ribs(painter);
    QLinearGradient bend(0, 0, width(), 0);
    bend.setColorAt(0.0, black(end_alpha));
    bend.setColorAt(end_width, Qt::transparent);
    bend.setColorAt(1.0 - end_width, Qt::transparent);
    bend.setColorAt(1.0, black(end_alpha));
    painter.fillRect(rect(), bend);
    paint_frame(painter);
    if (hasFocus()) {
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
        painter.drawRect(rect().adjusted(2, 2, -3, -3));
    }
}

QColor WheelWidget::body() const {
    return mixed(palette().color(QPalette::Button), palette().color(QPalette::Mid), 0.5);
}

QColor WheelWidget::highlight() const {
    // The darker the body, the less white stands out from it already.
    constexpr double on_black = 60.0;
    constexpr double on_white = 230.0;
    return {255, 255, 255, static_cast<int>(std::lerp(on_black, on_white, body().lightnessF()))};
}

void WheelWidget::paint_ribs(QPainter& painter) const {
    const int pitch = wheel_.TrackWidth() + wheel_.TrackDistance();
    const int upper = inset;
    const int lower = height() - 1 - inset;
    const auto line = [&](int x, const QColor& colour) {
        painter.setPen(colour);
        painter.drawLine(x, upper, x, lower);
    };
    // The first rib may have come in at the left edge only in part.
    for (int x = wheel_.phase() - pitch; x < width(); x += pitch) {
        // A rib is lit on its left; behind it lies the groove, deepest under the rib.
        line(x, highlight());
        const int groove = x + wheel_.TrackWidth();
        line(groove - 1, black(deep_alpha));
        for (int depth = 0; depth < wheel_.TrackDistance(); ++depth) {
            line(groove + depth, black(depth == 0 ? deep_alpha : shallow_alpha));
        }
    }
}

void WheelWidget::paint_frame(QPainter& painter) const {
    const QRect edge = rect();
    painter.setPen(black(edge_alpha));
    painter.drawLine(edge.left(), edge.bottom(), edge.right(), edge.bottom());
    painter.drawLine(edge.right(), edge.top(), edge.right(), edge.bottom());
    painter.setPen(highlight());
    painter.drawLine(edge.left(), edge.top(), edge.right(), edge.top());
    painter.drawLine(edge.left(), edge.top(), edge.left(), edge.bottom());
}

} // namespace kv408::ui
