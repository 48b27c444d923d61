#include "ui/bathtub_plot.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "ui/lengths.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr int decades = 15;
constexpr int decades_per_line = 3;
constexpr int quarters = 4;

/// The row of `ratio`, of which `area` has those down to 1E-15.
double row_of_ratio(const QRectF& area, double ratio) {
    constexpr double lowest = 2.0; // below the plot
    const double down =
        ratio > 0.0 ? std::clamp(-std::log10(ratio) / decades, 0.0, lowest) : lowest;
    return area.top() + down * area.height();
}

} // namespace

BathtubPlot::BathtubPlot(const JitterDialog& dialog, QWidget* parent)
    : QWidget(parent), dialog_(dialog) {
    setObjectName(u"picJitterBathtub"_s);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize BathtubPlot::sizeHint() const {
    const int letters = fontMetrics().height();
    return {letters * 28, letters * 11};
}

QSize BathtubPlot::minimumSizeHint() const {
    const int letters = fontMetrics().height();
    return {letters * 16, letters * 8};
}

void BathtubPlot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    painter.setPen(palette().color(QPalette::Text));
    if (!dialog_.bathtub()) {
        painter.drawText(rect().adjusted(window_gap, 0, -window_gap, 0),
                         Qt::AlignCenter | Qt::TextWordWrap,
                         QString::fromUtf8(text_of(dialog_.bathtub().why())));
        return;
    }
    const int letters = fontMetrics().height();
    const int beside = fontMetrics().horizontalAdvance(u"1E-15 "_s) + window_gap;
    const QRectF area(beside, letters / 2.0 + 2.0, width() - beside - 2.0 * window_gap,
                      height() - 2.0 * letters - 8.0);
    paint_grid(painter, area);
    paint_curve(painter, area);
}

void BathtubPlot::paint_grid(QPainter& painter, const QRectF& area) const {
    const int letters = fontMetrics().height();
    const QColor text = palette().color(QPalette::Text);
    const QColor line = palette().color(QPalette::Mid);
    for (int decade = 0; decade <= decades; decade += decades_per_line) {
        const double y = row_of_ratio(area, std::pow(10.0, -decade));
        painter.setPen(line);
        painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        painter.setPen(text);
        painter.drawText(QRectF(0.0, y - letters / 2.0, area.left() - 4.0, letters),
                         Qt::AlignRight | Qt::AlignVCenter,
                         decade == 0 ? u"1"_s : u"1E-%1"_s.arg(decade));
    }
    for (int quarter = 0; quarter <= quarters; ++quarter) {
        const double part = double(quarter) / quarters;
        const double x = area.left() + part * area.width();
        painter.setPen(line);
        painter.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        painter.setPen(text);
        painter.drawText(QRectF(x - 40.0, area.bottom() + 7.0, 80.0, letters), Qt::AlignCenter,
                         u"%1 UI"_s.arg(part));
    }
    const double told = row_of_ratio(area, told_error_ratio);
    painter.setPen(QPen(text, 1.0, Qt::DashLine));
    painter.drawLine(QPointF(area.left(), told), QPointF(area.right(), told));
}

void BathtubPlot::paint_curve(QPainter& painter, const QRectF& area) const {
    const std::vector<double>& ratios = *dialog_.bathtub();
    QPolygonF line;
    for (std::size_t place = 0; place < ratios.size(); ++place) {
        const double x = area.left() + area.width() * static_cast<double>(place) /
                                           static_cast<double>(ratios.size() - 1);
        line.append(QPointF(x, row_of_ratio(area, ratios[place])));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(area);
    painter.setPen(QPen(palette().color(QPalette::Link), 2.0));
    painter.drawPolyline(line);
}

} // namespace kv408::ui
