#pragma once

#include <QWidget>

#include "export/statistics_dialog.h"

namespace kv408::ui {

/// The trend of the chosen value over the last minutes, on the left, and its histogram, on the
/// right, on one scale of values. Its limits are dashed lines where they lie within.
class TrendPlot : public QWidget {
public:
    explicit TrendPlot(const StatisticsDialog& dialog, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The values that the plot spans, bottom to top.
    struct Span {
        double least;
        double greatest;
    };

    [[nodiscard]] static Span span_of(const ValueTrend& trend);
    void paint_trend(QPainter& painter, const QRect& area, const Span& span) const;
    void paint_histogram(QPainter& painter, const QRect& area, const Span& span) const;
    void paint_limits(QPainter& painter, const QRect& area, const Span& span) const;
    void paint_texts(QPainter& painter, const QRect& area, const Span& span) const;
    [[nodiscard]] const ValueTrend& trend() const;

    const StatisticsDialog& dialog_;
};

} // namespace kv408::ui
