#pragma once

#include <QWidget>

#include "export/jitter_dialog.h"

namespace kv408::ui {

/// The bathtub curve of the jitter window: the bit error ratio, decade by decade from 1 down to
/// 1E-15, over the time from one crossing to the next. Dashed: the ratio for which total jitter is
/// told. Without a curve the reason stands in its place.
class BathtubPlot : public QWidget {
public:
    /// Shows what `dialog`, which outlives it, has computed.
    explicit BathtubPlot(const JitterDialog& dialog, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paint_grid(QPainter& painter, const QRectF& area) const;
    void paint_curve(QPainter& painter, const QRectF& area) const;

    const JitterDialog& dialog_;
};

} // namespace kv408::ui
