#include "ui/spectrum_plot.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "state/engineering_format.h"
#include "ui/lengths.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

constexpr double shown_decibels = 100.0;
constexpr double decibels_per_line = 20.0;
constexpr double decibels_per_step = 10.0; // the upper edge is a multiple of it
constexpr int frequency_lines = 4;

QString hertz_on_axis(double hertz) {
    constexpr int digits = 3;
    return QString::fromStdString(engformat(hertz, digits)) + u"Hz"_s;
}

} // namespace

double SpectrumPlot::Axes::x(double frequency) const {
    const double part = logarithmic ? std::log(frequency / lowest) / std::log(highest / lowest)
                                    : (frequency - lowest) / (highest - lowest);
    return area.left() + part * area.width();
}

double SpectrumPlot::Axes::y(double decibels) const {
    const double down = (top - decibels) / shown_decibels;
    return area.top() + std::clamp(down, 0.0, 1.0) * area.height();
}

SpectrumPlot::SpectrumPlot(const SpectrumDialog& dialog, QWidget* parent)
    : QWidget(parent), dialog_(dialog) {
    setObjectName(u"picSpectrum"_s);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SpectrumPlot::sizeHint() const {
    const int letters = fontMetrics().height();
    return {letters * 30, letters * 15};
}

QSize SpectrumPlot::minimumSizeHint() const {
    const int letters = fontMetrics().height();
    return {letters * 18, letters * 9};
}

SpectrumPlot::Axes SpectrumPlot::axes() const {
    const Spectrum& spectrum = dialog_.spectrum();
    const int letters = fontMetrics().height();
    const int beside = fontMetrics().horizontalAdvance(u"-100 dBV "_s) + window_gap;
    Axes axes;
    axes.area = QRectF(beside, letters, width() - beside - 3.0 * letters,
                       height() - 2.0 * letters - 2.0 * window_gap);
    axes.logarithmic = dialog_.controls().chkSpectrumLog.checked();
    axes.lowest = axes.logarithmic ? spectrum.step : 0.0;
    axes.highest = spectrum.frequency(static_cast<double>(spectrum.power.size() - 1));
    const double most = *std::max_element(spectrum.power.begin(), spectrum.power.end());
    axes.top = std::ceil(dialog_.level(most) / decibels_per_step + 0.2) * decibels_per_step;
    return axes;
}

void SpectrumPlot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    if (dialog_.spectrum().power.empty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect().adjusted(window_gap, 0, -window_gap, 0),
                         Qt::AlignCenter | Qt::TextWordWrap,
                         QString::fromStdString(dialog_.reason()));
        return;
    }
    const Axes shown = axes();
    paint_levels(painter, shown);
    paint_frequencies(painter, shown);
    paint_lines(painter, shown);
    paint_peaks(painter, shown);
}

void SpectrumPlot::paint_levels(QPainter& painter, const Axes& axes) const {
    const int letters = fontMetrics().height();
    for (double below = 0.0; below <= shown_decibels; below += decibels_per_line) {
        const double level = axes.top - below;
        const double y = axes.y(level);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(QPointF(axes.area.left(), y), QPointF(axes.area.right(), y));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRectF(0.0, y - letters / 2.0, axes.area.left() - 4.0, letters),
                         Qt::AlignRight | Qt::AlignVCenter,
                         u"%1 %2"_s.arg(level).arg(QString::fromStdString(dialog_.unit())));
    }
}

SpectrumPlot::FrequencyText SpectrumPlot::text_at(const Axes& axes, double frequency) const {
    const QString text = hertz_on_axis(frequency);
    const double wide = fontMetrics().horizontalAdvance(text);
    return {frequency, text,
            QRectF(axes.x(frequency) - wide / 2.0, axes.area.bottom() + window_gap, wide,
                   fontMetrics().height())};
}

std::vector<SpectrumPlot::FrequencyText> SpectrumPlot::frequency_texts() const {
    if (dialog_.spectrum().power.empty()) {
        return {};
    }
    const Axes shown = axes();
    std::vector<FrequencyText> texts;
    if (!shown.logarithmic) {
        for (int line = 0; line <= frequency_lines; ++line) {
            texts.push_back(text_at(shown, shown.highest * line / frequency_lines));
        }
        return texts;
    }
    // The lowest line, the limit, and of the decades between them those that have room.
    constexpr double decade = 10.0;
    const FrequencyText limit = text_at(shown, shown.highest);
    texts.push_back(text_at(shown, shown.lowest));
    for (double at = std::pow(decade, std::ceil(std::log10(shown.lowest))); at < shown.highest;
         at *= decade) {
        const FrequencyText next = text_at(shown, at);
        if (next.place.left() >= texts.back().place.right() + window_gap &&
            next.place.right() + window_gap <= limit.place.left()) {
            texts.push_back(next);
        }
    }
    texts.push_back(limit);
    return texts;
}

void SpectrumPlot::paint_frequencies(QPainter& painter, const Axes& axes) const {
    for (const FrequencyText& shown : frequency_texts()) {
        const double x = axes.x(shown.frequency);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(QPointF(x, axes.area.top()), QPointF(x, axes.area.bottom()));
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(shown.place.adjusted(-1.0, 0.0, 1.0, 0.0), Qt::AlignCenter, shown.text);
    }
}

void SpectrumPlot::paint_lines(QPainter& painter, const Axes& axes) const {
    const Spectrum& spectrum = dialog_.spectrum();
    QPolygonF curve;
    for (std::size_t line = axes.logarithmic ? 1 : 0; line < spectrum.power.size(); ++line) {
        curve.append(QPointF(axes.x(spectrum.frequency(static_cast<double>(line))),
                             axes.y(dialog_.level(spectrum.power[line]))));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Link), 1.5));
    painter.drawPolyline(curve);
}

void SpectrumPlot::paint_peaks(QPainter& painter, const Axes& axes) const {
    constexpr double size = 6.0;
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Text));
    for (const SpectralPeak& peak : dialog_.peaks()) {
        const QPointF at(axes.x(peak.frequency), axes.y(dialog_.level(peak.power)) - 2.0);
        painter.drawPolygon(
            QPolygonF({at, at + QPointF(-size / 2.0, -size), at + QPointF(size / 2.0, -size)}));
    }
}

} // namespace kv408::ui
