#pragma once

#include <QLabel>
#include <QPointer>

#include "display/box_geometry.h"
#include "panel/controls.h"

namespace kv408::ui {

class PlotWidget;

/// A marker beside the plot: a small flag that bears a text and points at the picture.
class Marker : public QLabel {
public:
    /// Where the flag points.
    enum class Direction { right, left, down };

    /// A marker on `plot` that points in `direction`.
    Marker(PlotWidget* plot, Direction direction);

    /// Puts it where it marks row `unit` of the plot, and column `unit` where it points down.
    void mark(int unit);

    /// Takes the size and place that the plot's scale gives it.
    void fit();

    /// Comes to lie over the plot's other markers when `times`, how often it was brought to the
    /// front so far, has grown.
    void come_to_front(int times);

    /// Lets two markers of the same edge stand side by side wherever they would lie over each
    /// other: `outer` then steps back from the plot by its own width.
    static void keep_apart(Marker& inner, Marker& outer);

    /// Steps back from the plot, or up to it, as the marker beside it asks for now.
    void make_room();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QPolygonF outline() const;

    PlotWidget& plot_;
    Direction direction_;
    box::Corner corner_{}; ///< in the plot box, at natural size
    int times_brought_ = 0;
    QPointer<Marker> inner_; ///< the marker that this one steps back for, if any
    QPointer<Marker> outer_; ///< the marker that steps back for this one, if any
    bool stepped_back_ = false;
    double growth_ = 1.0; ///< of its natural size
};

/// Shows text, colours and place of `control` on `marker`.
void bind(Marker* marker, MarkerLabel& control);

} // namespace kv408::ui
