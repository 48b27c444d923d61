#pragma once

#include <QWidget>

#include "export/spectrum_dialog.h"

namespace kv408::ui {

/// The spectrum of the spectrum window: the level of each line over its frequency, in the hundred
/// decibels below the highest, with a triangle at each of the highest peaks. Without a spectrum the
/// reason stands in its place.
class SpectrumPlot : public QWidget {
public:
    explicit SpectrumPlot(const SpectrumDialog& dialog, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Where frequencies and levels stand.
    struct Axes {
        QRectF area;
        double lowest = 0.0;  ///< frequency at the left
        double highest = 0.0; ///< frequency at the right
        bool logarithmic = false;
        double top = 0.0; ///< decibels at the upper edge

        [[nodiscard]] double x(double frequency) const;
        [[nodiscard]] double y(double decibels) const;
    };

    [[nodiscard]] Axes axes() const;
    void paint_levels(QPainter& painter, const Axes& axes) const;
    void paint_frequencies(QPainter& painter, const Axes& axes) const;
    void paint_frequency(QPainter& painter, const Axes& axes, double frequency) const;
    void paint_lines(QPainter& painter, const Axes& axes) const;
    void paint_peaks(QPainter& painter, const Axes& axes) const;

    const SpectrumDialog& dialog_;
};

} // namespace kv408::ui
