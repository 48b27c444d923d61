#include "ui/window_places.h"

#include <algorithm>
#include <array>
#include <tuple>

#include <QApplication>

#include "ui/input_block.h"

namespace kv408::ui {
namespace {

constexpr int gap = 8;

/// The place within `room` that is nearest to `wanted`; a window too large for it begins in its
/// upper left corner.
QRect held_in(const QRect& room, const QRect& wanted) {
    QRect held = wanted;
    held.moveRight(std::min(held.right(), room.right()));
    held.moveBottom(std::min(held.bottom(), room.bottom()));
    held.moveLeft(std::max(held.left(), room.left()));
    held.moveTop(std::max(held.top(), room.top()));
    return held;
}

qint64 area(const QRect& rectangle) {
    return qint64{rectangle.width()} * rectangle.height();
}

} // namespace

QWidget* asking_window(QWidget* main) {
    QWidget* const front = InputBlock::front_of(main);
    if (front != main) {
        return front;
    }
    QWidget* const active = QApplication::activeWindow();
    for (const QWidget* widget = active; widget != nullptr; widget = widget->parentWidget()) {
        if (widget == main) {
            return active;
        }
    }
    return main;
}

QPoint place_beside(const QSize& size, const Surroundings& around) {
    const QRect& main = around.main;
    const std::array<QPoint, 5> corners = {
        QPoint(main.right() + gap, main.top()),
        QPoint(main.left() - gap - size.width(), main.top()),
        QPoint(main.left(), main.bottom() + gap),
        QPoint(main.left(), main.top() - gap - size.height()),
        QPoint(around.plot.right() + gap, main.top()),
    };
    const auto covered = [&](const QPoint& corner) {
        const QRect held = held_in(around.room, QRect(corner, size));
        return std::tuple(area(held & around.plot), area(held & main));
    };
    const QPoint best = *std::min_element(
        corners.begin(), corners.end(),
        [&](const QPoint& one, const QPoint& other) { return covered(one) < covered(other); });
    return held_in(around.room, QRect(best, size)).topLeft();
}

} // namespace kv408::ui
