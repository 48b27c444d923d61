#include "ui/swatch.h"

#include <QPainter>

#include "ui/colours.h"

namespace kv408::ui {

Swatch::Swatch(QWidget* parent, int width, int height) : QLabel(parent) {
    let_paint_itself(*this);
    setMinimumSize(width, height);
}

void Swatch::paintEvent(QPaintEvent* /*event*/) {
    constexpr double corner = 3.0;
    constexpr double visibility = 0.35;
    const QColor fill = palette().color(QPalette::Window);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // An outline on either side of the colour: one of them shows, whatever lies around.
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    painter.setPen(mixed(fill, readable_on(fill), visibility));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), corner - 1.0,
                            corner - 1.0);
}

} // namespace kv408::ui
