#pragma once

#include <vector>

#include <QString>
#include <QWidget>

#include "export/spectrum_dialog.h"

namespace kv408::ui {

/// The spectrum of the spectrum window: the level of each line over its frequency, in the hundred
/// decibels below the highest, with a triangle at each of the highest peaks. Without a spectrum the
/// reason stands in its place.
class SpectrumPlot : public QWidget {
public:
    /// Shows what `dialog`, which outlives it, has computed.
    explicit SpectrumPlot(const SpectrumDialog& dialog, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

    /// A frequency at the axis, as a text that has its place below it.
    struct FrequencyText {
        double frequency = 0.0; ///< hertz
        QString text;
        QRectF place; ///< as wide as the text
    };

    /// The texts at the axis of frequencies, from the left, none of which touches another; none
    /// without a spectrum.
    [[nodiscard]] std::vector<FrequencyText> frequency_texts() const;

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
    [[nodiscard]] FrequencyText text_at(const Axes& axes, double frequency) const;
    void paint_lines(QPainter& painter, const Axes& axes) const;
    void paint_peaks(QPainter& painter, const Axes& axes) const;

    const SpectrumDialog& dialog_;
};

} // namespace kv408::ui
