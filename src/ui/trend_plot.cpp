#include "ui/trend_plot.h"

#include <algorithm>
#include <array>

#include <QPainter>

#include "measure/measured_value.h"
#include "measure/measurement_rows.h"
#include "state/engineering_format.h"
#include "ui/colours.h"
#include "ui/lengths.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;
using std::chrono::seconds;

constexpr std::size_t histogram_ranges = 32;
constexpr int plot_gap = 10; ///< between trend and histogram

/// The row in `area` of `value`, of `least`..`greatest`.
double row_of(const QRect& area, double value, double least, double greatest) {
    return area.bottom() - (value - least) / (greatest - least) * area.height();
}

/// The least of a few spans of time that goes back to `age`.
seconds time_span(std::chrono::nanoseconds age) {
    constexpr std::array spans = {seconds(10), seconds(30), seconds(60), seconds(120)};
    const auto* const found =
        std::find_if(spans.begin(), spans.end(), [age](seconds span) { return age <= span; });
    return found == spans.end() ? seconds(ValueTrend::span) : *found;
}

QString span_text(seconds span) {
    constexpr int minute = 60;
    return span.count() < minute ? u"-%1 s"_s.arg(span.count())
                                 : u"-%1 min"_s.arg(span.count() / minute);
}

} // namespace

TrendPlot::TrendPlot(const StatisticsDialog& dialog, QWidget* parent)
    : QWidget(parent), dialog_(dialog) {
    setObjectName(u"picStatisticsTrend"_s);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent); // all of it is painted with each refresh
}

QSize TrendPlot::sizeHint() const {
    const int letters = fontMetrics().height();
    return {letters * 28, letters * 9};
}

QSize TrendPlot::minimumSizeHint() const {
    const int letters = fontMetrics().height();
    return {letters * 16, letters * 6};
}

const ValueTrend& TrendPlot::trend() const {
    return dialog_.trend(dialog_.chosen_channel(), dialog_.chosen_row());
}

TrendPlot::Span TrendPlot::span_of(const ValueTrend& trend) {
    const auto& points = trend.points();
    const auto [least, greatest] =
        std::minmax_element(points.begin(), points.end(), [](const auto& one, const auto& other) {
            return one.value < other.value;
        });
    constexpr double around = 0.08;
    const double height = greatest->value - least->value;
    // A value that does not change lies in the middle.
    const double free = height > 0.0 ? height * around : std::max(std::abs(least->value), 1e-12);
    return {least->value - free, greatest->value + free};
}

void TrendPlot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    const int letters = fontMetrics().height();
    const QRect inner = rect().adjusted(window_gap, letters + 4, -window_gap, -letters - 4);
    painter.setPen(palette().color(QPalette::Text));
    if (trend().points().empty()) {
        painter.drawText(rect(), Qt::AlignCenter, u"No value yet"_s);
        return;
    }
    const Span span = span_of(trend());
    QRect left = inner;
    left.setWidth(inner.width() * 2 / 3);
    QRect right = inner;
    right.setLeft(left.right() + plot_gap);
    paint_texts(painter, left, span);
    paint_histogram(painter, right, span);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(left.right() + plot_gap / 2, inner.top(), left.right() + plot_gap / 2,
                     inner.bottom());
    paint_limits(painter, inner, span);
    paint_trend(painter, left, span);
}

void TrendPlot::paint_trend(QPainter& painter, const QRect& area, const Span& span) const {
    const auto& points = trend().points();
    const auto now = dialog_.now();
    const std::chrono::duration<double> width = time_span(now - points.front().time);
    const auto column = [&](const ValueTrend::Point& point) {
        const std::chrono::duration<double> age = now - point.time;
        return area.right() - age / width * area.width();
    };
    // Of the values that share a column only the extremes are seen.
    QPolygonF line;
    const auto end = points.end();
    for (auto from = points.begin(); from != end;) {
        const double x = column(*from);
        const auto to = std::find_if(
            from, end, [&](const ValueTrend::Point& point) { return column(point) - x >= 1.0; });
        const auto [least, greatest] = std::minmax_element(
            from, to, [](const auto& one, const auto& other) { return one.value < other.value; });
        for (const double value :
             {from->value, least->value, greatest->value, std::prev(to)->value}) {
            line.append(QPointF(x, row_of(area, value, span.least, span.greatest)));
        }
        from = to;
    }
    painter.setPen(QPen(palette().color(QPalette::Link), 1.0));
    painter.drawPolyline(line);
    constexpr QPointF half_dot(1.5, 1.5);
    painter.fillRect(QRectF(line.back() - half_dot, line.back() + half_dot),
                     palette().color(QPalette::Link));
}

void TrendPlot::paint_histogram(QPainter& painter, const QRect& area, const Span& span) const {
    const Histogram histogram = trend().histogram(histogram_ranges);
    const auto most = *std::max_element(histogram.count.begin(), histogram.count.end());
    const QColor bar = mixed(palette().color(QPalette::Base), palette().color(QPalette::Link), 0.7);
    for (std::size_t range = 0; range < histogram.count.size(); ++range) {
        const double from = histogram.least + static_cast<double>(range) * histogram.width;
        const double bottom = row_of(area, from, span.least, span.greatest);
        const double top = row_of(area, from + histogram.width, span.least, span.greatest);
        const double width = double(area.width()) * histogram.count[range] / most;
        painter.fillRect(QRectF(area.left(), top, width, std::max(bottom - top - 1.0, 2.0)), bar);
    }
}

void TrendPlot::paint_limits(QPainter& painter, const QRect& area, const Span& span) const {
    const std::size_t channel = dialog_.chosen_channel();
    const std::size_t row = dialog_.chosen_row();
    const ValueLimits& limits = dialog_.statistics().limits(channel, row);
    painter.setPen(QPen(qcolor(limit_colours.at(dialog_.rule(channel, row).colour).colour), 1.0,
                        Qt::DashLine));
    for (const auto& limit : {limits.least, limits.greatest}) {
        if (limit && *limit >= span.least && *limit <= span.greatest) {
            const double y = row_of(area, *limit, span.least, span.greatest);
            painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        }
    }
}

void TrendPlot::paint_texts(QPainter& painter, const QRect& area, const Span& span) const {
    constexpr int digits = 5;
    const auto text = [&](double value) {
        return QString::fromStdString(
            engformat(value, digits)
                .append(unit_name(measurement_rows()[dialog_.chosen_row()].unit)));
    };
    const int letters = fontMetrics().height();
    const QRect above(area.left(), area.top() - letters - 2, area.width(), letters);
    const QRect below(area.left(), area.bottom() + 2, area.width(), letters);
    painter.drawText(above, Qt::AlignLeft, text(span.greatest));
    painter.drawText(below, Qt::AlignLeft, text(span.least));
    const auto age = dialog_.now() - trend().points().front().time;
    painter.drawText(below, Qt::AlignHCenter, span_text(time_span(age)) + u" .. now"_s);
    const QRect beside(area.right() + plot_gap, above.top(),
                       rect().right() - area.right() - plot_gap, letters);
    painter.drawText(beside, Qt::AlignLeft, u"Histogram"_s);
}

} // namespace kv408::ui
