#include "ui/window_halves.h"

#include <algorithm>
#include <optional>

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QStyle>

#include "ui/lengths.h"

namespace kv408::ui {
namespace {

/// Even here the controls can be told apart.
constexpr QSize least_size(400, 240);

} // namespace

WindowHalves::WindowHalves(ScreenPanel* screen, ControlPanel* controls)
    : screen_(screen), area_(new ScrollingArea(screen, this)), controls_(controls) {
    controls->setParent(this);
}

void WindowHalves::hide_controls(bool hidden) {
    if (hidden) {
        move_status(false);
        QWidget* const focused = window()->focusWidget();
        had_keyboard_ = controls_->isAncestorOf(focused) ? focused : nullptr;
        if (had_keyboard_) {
            // Qt would leave it where there is no other place for it.
            had_keyboard_->clearFocus();
        }
        controls_->hide();
    } else {
        keeping_keyboard([this] {
            screen_->set_beside(nullptr);
            controls_->take_status_back();
            controls_->show();
        });
    }
    lay_out();
    if (!hidden && had_keyboard_ && window()->focusWidget() == nullptr) {
        had_keyboard_->setFocus(Qt::OtherFocusReason);
    }
}

void WindowHalves::keeping_keyboard(const std::function<void()>& move) {
    // What moves to another parent loses the keyboard.
    const QPointer<QWidget> focused = QApplication::focusWidget();
    move();
    if (focused && controls_->status().isAncestorOf(focused)) {
        focused->setFocus(Qt::OtherFocusReason);
    }
}

QSize WindowHalves::sizeHint() const {
    const QSize screen = screen_->sizeHint();
    const QSize controls = controls_->sizeHint();
    return {screen.width() + controls.width() + 3 * window_gap,
            std::max(screen.height(), controls.height()) + 2 * window_gap};
}

QSize WindowHalves::minimumSizeHint() const {
    return least_size;
}

void WindowHalves::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        // Once what lies in here has heard of it.
        QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
    }
}

bool WindowHalves::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {
        lay_out();
    }
    return QWidget::event(event);
}

void WindowHalves::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    lay_out();
}

bool WindowHalves::gains_by_column(QSize whole, QSize above_status) const {
    const PanelFrame& status = controls_->status();
    const std::optional<PlotScale> beside = screen_->scale_in(whole, &status);
    const std::optional<PlotScale> beneath = screen_->scale_in(above_status, nullptr);
    if (beside && beneath) {
        return beside->width() > beneath->width();
    }
    // Where not even natural size has room, what has to be scrolled one way only is the better.
    return beside || (!beneath && screen_->least_size(&status).width() <= whole.width());
}

void WindowHalves::move_status(bool beside) {
    PanelFrame& status = controls_->status();
    QWidget* const place = beside ? static_cast<QWidget*>(screen_) : this;
    if (status.parentWidget() == place) {
        return;
    }
    keeping_keyboard([&] {
        screen_->set_beside(beside ? &status : nullptr);
        if (!beside) {
            status.setParent(this);
            status.show();
        }
    });
}

void WindowHalves::lay_out_hidden() {
    PanelFrame& status = controls_->status();
    const QSize whole(width() - 2 * window_gap, height() - 2 * window_gap);
    const bool stacked = !status.shows_both_halves_in(whole.width());
    const int high = status.usual_height(stacked);
    const QSize above_status = whole - QSize(0, high + window_gap);
    const bool beside = gains_by_column(whole, above_status);
    move_status(beside);
    area_->setGeometry({{window_gap, window_gap}, beside ? whole : above_status});
    if (!beside) {
        status.stack_parts(stacked);
        status.setGeometry(window_gap, height() - window_gap - high, whole.width(), high);
    }
}

bool WindowHalves::as_large_beside(int wide, int narrow, QSize room) const {
    const auto plot_beside = [&](int controls) {
        const auto scale = screen_->scale_in({room.width() - controls, room.height()}, nullptr);
        return scale ? scale->width() : 0; // in too low a room it has natural size beside both
    };
    return plot_beside(wide) >= plot_beside(narrow);
}

int WindowHalves::width_of_controls(QSize room) const {
    const QSize least = screen_->minimumSizeHint();
    const int bar =
        room.height() < least.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    // Two columns come where the plot has a unit of the window for each of its own, or all that its
    // height lets it have.
    const int beside_whole = room.width() - screen_->whole_width() - bar;
    const int two = controls_->width_within(2, beside_whole);
    const int beside_least = room.width() - least.width() - bar;
    const int one = std::min(controls_->width_within(1, beside_least), room.width() / 2);
    const bool whole = two <= beside_whole;
    return whole || (two <= beside_least && as_large_beside(two, one, room)) ? two : one;
}

void WindowHalves::lay_out() {
    if (controls_->isHidden()) {
        lay_out_hidden();
        return;
    }
    const QSize room(width() - 3 * window_gap, height() - 2 * window_gap);
    const int controls = width_of_controls(room);
    area_->setGeometry(window_gap, window_gap, room.width() - controls, room.height());
    // What is spare goes to the plot.
    controls_->setGeometry(width() - window_gap - controls, window_gap, controls,
                           std::min(room.height(), controls_->sizeHint().height()));
}

} // namespace kv408::ui
