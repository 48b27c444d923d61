#pragma once

#include <functional>
#include <vector>

#include <QTimer>
#include <QWidget>

#include "display/plot_scale.h"

namespace kv408::ui {

/// A picture that is composed at the size at which it is shown.
struct ScaledPicture {
    const Surface& surface;
    std::function<void(const PlotScale&)> set_scale; ///< composes it anew, now
    /// Rectangles of pixels that hold all that has changed since this was called last, as
    /// Tiles::rectangles() has them.
    std::function<std::vector<Rectangle>()> take_changed;
};

/// The plot box: the picture with a margin for the markers on every side. Each pixel of the picture
/// is one of the screen.
class PlotWidget : public QWidget {
public:
    /// Shows `picture`, whose surface outlives the widget.
    explicit PlotWidget(ScaledPicture picture, QWidget* parent = nullptr);

    /// Pixels of the screen for each unit of the plot.
    [[nodiscard]] const PlotScale& scale() const { return scale_; }

    /// Sets the scale of the picture, and the widget's size with it.
    void set_scale(const PlotScale& scale);

    /// Shows the picture faint, as one that is old, or as it is. The picture itself does not
    /// change.
    void set_dimmed(bool dimmed);

    /// Size of the plot box at `scale`, in units of the window, each of `ratio` pixels.
    [[nodiscard]] static QSize size_at(const PlotScale& scale, qreal ratio);

    /// The place of (`x`, `y`) of the plot box, in units of the widget.
    [[nodiscard]] QPointF place_of(double x, double y) const;

    /// How much larger markers and numbers in the margin are than at natural size: with the plot by
    /// quarters, as long as their letters are no higher than twice the desktop's. Where the plot is
    /// smaller than its natural size is in units of the window, as on a dense screen, so are they.
    [[nodiscard]] double margin_growth() const;

    /// What markers and numbers in the margin are written with.
    [[nodiscard]] QFont margin_font() const;

    /// The place in the plot box, in units of the plot and fractions of them, of the middle of the
    /// pixel of the screen in which `on_screen` lies.
    [[nodiscard]] QPointF box_place_at(QPointF on_screen) const;

    /// The picture has changed. What has is painted soon, at most about sixty times a second, and
    /// always in its last state.
    void show_changes();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void show_pending();
    void fill_margins(QPainter& painter, const QRegion& region, const QRect& target) const;

    ScaledPicture picture_;
    PlotScale scale_;
    bool dimmed_ = false;
    bool pending_ = false; ///< a change waits for the pause's end
    QTimer pause_;         ///< runs after a painting until the next one may follow
};

} // namespace kv408::ui
