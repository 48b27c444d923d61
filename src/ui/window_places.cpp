#include "ui/window_places.h"

#include <algorithm>
#include <array>
#include <tuple>

#include <QApplication>
#include <QScreen>
#include <QStyle>

#include "ui/input_block.h"
#include "ui/lengths.h"

namespace kv408::ui {
namespace {

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

/// Title bar and borders of a window that is not shown yet, for which those of `shown` are taken.
QMargins borders_like(const QWidget& shown) {
    const QRect inner = shown.geometry();
    const QRect outer = shown.frameGeometry();
    const int top = inner.top() - outer.top();
    return {inner.left() - outer.left(), top > 0 ? top : title_bar_height,
            outer.right() - inner.right(), outer.bottom() - inner.bottom()};
}

/// The program's windows that are seen, with their frames, but for `one` and `other`.
std::vector<QRect> windows_but(const QWidget& one, const QWidget& other) {
    std::vector<QRect> places;
    for (const QWidget* const widget : QApplication::topLevelWidgets()) {
        const bool plain = widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog;
        if (widget->isVisible() && plain && widget != &one && widget != &other) {
            places.push_back(widget->frameGeometry());
        }
    }
    return places;
}

} // namespace

QWidget* asking_window(QWidget* main_window) {
    QWidget* const front = InputBlock::front_of(main_window);
    if (front != main_window) {
        return front;
    }
    QWidget* const active = QApplication::activeWindow();
    for (const QWidget* widget = active; widget != nullptr; widget = widget->parentWidget()) {
        if (widget == main_window) {
            return active;
        }
    }
    return main_window;
}

QPoint place_beside(const QSize& size, const Surroundings& around) {
    const QRect& main_window = around.main_window;
    const std::array<QPoint, 6> corners = {
        QPoint(main_window.right() + 1 + window_gap, main_window.top()),
        QPoint(main_window.left() - window_gap - size.width(), main_window.top()),
        QPoint(main_window.left(), main_window.bottom() + 1 + window_gap),
        QPoint(main_window.left(), main_window.top() - window_gap - size.height()),
        QPoint(around.keep.right() + 1 + window_gap, main_window.top()),
        QPoint(around.keep.left() - window_gap - size.width(), main_window.top()),
    };
    const auto covered = [&](const QPoint& corner) {
        const QRect held = held_in(around.room, QRect(corner, size));
        qint64 others = 0;
        for (const QRect& other : around.others) {
            others += area(held & other);
        }
        return std::tuple(area(held & around.keep), area(held & main_window), others);
    };
    const QPoint best = *std::min_element(
        corners.begin(), corners.end(),
        [&](const QPoint& one, const QPoint& other) { return covered(one) < covered(other); });
    return held_in(around.room, QRect(best, size)).topLeft();
}

void put_beside(QWidget& window, const QWidget& main_window, const QWidget& keep) {
    const QRect room = main_window.screen()->availableGeometry();
    const QMargins borders = borders_like(main_window);
    QSize wanted = window.sizeHint().grownBy(borders);
    if (wanted.height() > room.height()) {
        wanted.rwidth() += window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    }
    const QSize size = wanted.boundedTo(room.size());
    const QRect kept(keep.mapToGlobal(QPoint()), keep.size());
    const QPoint corner = place_beside(size, {.room = room,
                                              .main_window = main_window.frameGeometry(),
                                              .keep = kept,
                                              .others = windows_but(window, main_window)});
    // Told without its frame: where the frame of a new window begins, desktops do not agree.
    window.setGeometry(QRect(corner, size).marginsRemoved(borders));
}

} // namespace kv408::ui
