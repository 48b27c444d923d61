#pragma once

#include <QLabel>
#include <QWidget>

#include "display/surface.h"
#include "panel/front_panel.h"
#include "ui/plot_widget.h"

namespace kv408::ui {

/// The left half of the window: the plot on a surround of its colour with the read-outs above and
/// below it and the results of the measurements. The plot takes the largest whole scale that fits,
/// and all of it stays in the middle.
class ScreenPanel : public QWidget {
public:
    /// Shows `surface` and the controls of `panel` that lie on the screen.
    ScreenPanel(const Surface& surface, FrontPanel& panel, QWidget* parent = nullptr);

    /// The plot.
    [[nodiscard]] PlotWidget& plot() { return *plot_; }

    /// Room for everything with a pixel of the picture as large as a unit of the window.
    [[nodiscard]] QSize sizeHint() const override;

    /// Room for everything with a pixel of the picture as large as one of the screen.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    /// The size of all of it around a plot of `plot_height`.
    [[nodiscard]] QSize size_around(int plot_height) const;
    void fit();
    [[nodiscard]] QWidget* make_header(FrontPanel& panel);
    [[nodiscard]] QWidget* make_footer(FrontPanel& panel);
    void make_markers(FrontPanel& panel);
    [[nodiscard]] QWidget* make_cursor_read_outs(FrontPanel& panel);

    PlotWidget* plot_;
    QWidget* header_;
    QWidget* footer_;
    QWidget* results_;
    QWidget* cursor_read_outs_;
    qreal ratio_ = 0.0; ///< device pixels a unit that the plot was last fitted for
};

} // namespace kv408::ui
