#pragma once

#include <QTimer>
#include <QWidget>

#include "display/surface.h"

namespace kv408::ui {

/// The plot box: the picture with a margin for the markers on every side. Every pixel of the
/// picture is shown as a square of `scale()` by `scale()` device pixels, so that it stays what it
/// is at any size and on any screen.
class PlotWidget : public QWidget {
public:
    /// Shows `surface`, which outlives the widget.
    explicit PlotWidget(const Surface& surface, QWidget* parent = nullptr);

    /// Device pixels a pixel of the picture.
    [[nodiscard]] int scale() const { return scale_; }

    /// Sets the scale, 1 or more, and the widget's size with it.
    void set_scale(int scale);

    /// Shows the picture faint, as one that is old, or as it is. The picture itself does not
    /// change.
    void set_dimmed(bool dimmed);

    /// The largest scale at which the plot box fits into `room` (at least 1) where a unit of the
    /// window has `ratio` device pixels.
    [[nodiscard]] static int scale_for(QSizeF room, qreal ratio);

    /// Size of the plot box at `scale`, in units of the window.
    [[nodiscard]] static QSize size_at(int scale, qreal ratio);

    /// The place of (`x`, `y`) of the plot box, in units of the widget.
    [[nodiscard]] QPointF place_of(double x, double y) const;

    /// The pixel of the plot box, at the picture's natural size, that `on_screen` lies in.
    [[nodiscard]] QPoint pixel_at(QPointF on_screen) const;

    /// The picture has changed in `columns`. It is painted soon, at most about sixty times a
    /// second, and always in its last state.
    void show_columns(Columns columns);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void show_pending();

    const Surface& surface_;
    int scale_ = 1;
    bool dimmed_ = false;
    Columns pending_;
    QTimer pause_; ///< runs after a painting until the next one may follow
};

} // namespace kv408::ui
