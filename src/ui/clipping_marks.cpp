#include "ui/clipping_marks.h"

#include <QHBoxLayout>

#include "display/box_geometry.h"
#include "state/plot_geometry.h"
#include "ui/bind.h"
#include "ui/plate.h"
#include "ui/widget_maker.h"

namespace kv408::ui {
namespace {

using namespace Qt::StringLiterals;

} // namespace

ClippingMarks::ClippingMarks(PlotWidget* plot, ReadoutsControls& controls, Edge edge)
    : QWidget(plot), plot_(*plot), edge_(edge) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    const bool upper = edge == Edge::upper;
    for (const Channel channel : both_channels) {
        auto* const plate = new Plate(this);
        describe(*plate, {u"Clipping"_s,
                          u"The trace leaves the instrument's scale at this edge of the plot"_s});
        bind(plate, (upper ? controls.above : controls.below).at(channel));
        layout->addWidget(plate);
    }
}

void ClippingMarks::fit() {
    constexpr int from_edge = 3;
    const bool upper = edge_ == Edge::upper;
    const int row = box::top + (upper ? from_edge : plot::height - from_edge);
    const QPoint middle = plot_.place_of(box::left + plot::centre_x, row).toPoint();
    move(middle.x() - width() / 2, upper ? middle.y() : middle.y() - height());
}

void ClippingMarks::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    fit();
}

} // namespace kv408::ui
