#include "ui/wheel_area.h"

#include <QLinearGradient>
#include <QPainter>

#include "ui/colours.h"

namespace kv408::ui {
namespace {

constexpr int wheel_height = 32;
constexpr int least_width = 120;
constexpr int rib_pitch = 12; ///< a rib of 8 pixels and a gap of 4
constexpr int inset = 3;

} // namespace

WheelArea::WheelArea(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize WheelArea::sizeHint() const {
    return {least_width, wheel_height};
}

void WheelArea::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor body = palette().color(QPalette::Button);
    const QColor rim = mixed(body, Qt::black, 0.55);
    const double fade = isEnabled() ? 0.0 : 0.5;
    const auto shade = [&](const QColor& to, double part) {
        return mixed(mixed(body, to, part), palette().color(QPalette::AlternateBase), fade);
    };
    QLinearGradient across(0, 0, width(), 0);
    across.setColorAt(0.0, shade(rim, 0.9));
    across.setColorAt(0.5, shade(Qt::white, 0.12));
    across.setColorAt(1.0, shade(rim, 0.9));
    painter.fillRect(rect(), across);
    for (int x = rib_pitch / 2; x < width() - inset; x += rib_pitch) {
        painter.setPen(shade(Qt::black, 0.45));
        painter.drawLine(x, inset, x, height() - 1 - inset);
        painter.drawLine(x + 1, inset, x + 1, height() - 1 - inset);
        painter.setPen(shade(Qt::white, 0.35));
        painter.drawLine(x + 2, inset, x + 2, height() - 1 - inset);
    }
    painter.setPen(shade(Qt::white, 0.5));
    painter.drawLine(0, 0, width() - 1, 0);
    painter.drawLine(0, 0, 0, height() - 1);
    painter.setPen(shade(Qt::black, 0.5));
    painter.drawLine(0, height() - 1, width() - 1, height() - 1);
    painter.drawLine(width() - 1, 0, width() - 1, height() - 1);
}

} // namespace kv408::ui
