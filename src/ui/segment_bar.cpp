#include "ui/segment_bar.h"

#include <algorithm>

#include <QPainter>

#include "ui/colours.h"
#include "ui/lengths.h"

namespace kv408::ui {
namespace {

constexpr int least_bar_height = 24;
constexpr int side_padding = 8;
} // namespace

SegmentBar::SegmentBar(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(true);
    setUsesScrollButtons(true);
    setElideMode(Qt::ElideNone);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize SegmentBar::tabSizeHint(int index) const {
    constexpr int around = 7;
    return {fontMetrics().horizontalAdvance(tabText(index)) + 2 * side_padding,
            std::max(least_bar_height, fontMetrics().height() + around)};
}

QSize SegmentBar::minimumTabSizeHint(int index) const {
    return tabSizeHint(index);
}

void SegmentBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), box_corner, box_corner);
    for (int index = 0; index < count(); ++index) {
        paint_segment(painter, index);
    }
}

void SegmentBar::paint_segment(QPainter& painter, int index) const {
    const QRect place = tabRect(index);
    const bool selected = index == currentIndex();
    QPalette::ColorRole text = QPalette::WindowText;
    if (selected) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(QPalette::Highlight));
        painter.drawRoundedRect(QRectF(place).adjusted(2.0, 2.0, -2.0, -2.0), box_corner - 1.0,
                                box_corner - 1.0);
        text = QPalette::HighlightedText;
    } else if (index > 0 && index - 1 != currentIndex()) {
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(place.left(), place.top() + 6, place.left(), place.bottom() - 6);
    }
    painter.setPen(palette().color(text));
    painter.drawText(place, Qt::AlignCenter, tabText(index));
    if (selected && hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(palette().color(QPalette::HighlightedText));
        painter.drawRoundedRect(QRectF(place).adjusted(4.5, 4.5, -4.5, -4.5), 2.0, 2.0);
    }
}

} // namespace kv408::ui
