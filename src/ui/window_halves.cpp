#include "ui/window_halves.h"

#include <algorithm>

#include <QEvent>
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
        controls_->status().setParent(this);
        controls_->status().show();
    } else {
        controls_->take_status_back();
    }
    controls_->setVisible(!hidden);
    lay_out();
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

void WindowHalves::lay_out() {
    if (controls_->isHidden()) {
        PanelFrame& status = controls_->status();
        const int high = status.sizeHint().height();
        area_->setGeometry(window_gap, window_gap, width() - 2 * window_gap,
                           height() - high - 3 * window_gap);
        status.setGeometry(window_gap, height() - window_gap - high, area_->width(), high);
        return;
    }
    const QSize room(width() - 3 * window_gap, height() - 2 * window_gap);
    const QSize needed = screen_->minimumSizeHint();
    const int bar =
        room.height() < needed.height() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    const int controls =
        std::min(controls_->width_within(room.width() - needed.width() - bar), room.width() / 2);
    area_->setGeometry(window_gap, window_gap, room.width() - controls, room.height());
    // What is spare goes to the plot.
    controls_->setGeometry(width() - window_gap - controls, window_gap, controls,
                           std::min(room.height(), controls_->sizeHint().height()));
}

} // namespace kv408::ui
