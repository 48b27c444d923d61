#include "ui/marker.h"

#include <cmath>
#include <cstdlib>

#include <QPainter>

#include "ui/bind.h"
#include "ui/colours.h"
#include "ui/plot_widget.h"

namespace kv408::ui {
namespace {

constexpr int marker_height = 2 * box::marker_middle + 1; ///< with a row in its middle
constexpr int tip = 5;                                    ///< length of the pointed end

} // namespace

Marker::Marker(PlotWidget* plot, Direction direction)
    : QLabel(plot), plot_(*plot), direction_(direction) {
    let_paint_itself(*this);
    fit();
}

void Marker::mark(int unit) {
    corner_ = direction_ == Direction::right  ? box::left_marker(unit)
              : direction_ == Direction::left ? box::right_marker(unit)
                                              : box::upper_marker(unit);
    fit();
}

void Marker::fit() {
    growth_ = plot_.margin_growth();
    const QSizeF size = QSizeF(box::marker_width, marker_height) * growth_;
    // The middle of its row or column, and the end that it points with.
    const double middle_row = plot_.place_of(0, corner_.top + marker_height / 2.0).y();
    QRectF place({}, size);
    if (direction_ == Direction::down) {
        const QPointF end = plot_.place_of(corner_.left + 0.5, corner_.top + marker_height);
        place.moveBottomLeft({end.x() - size.width() / 2, end.y()});
    } else if (direction_ == Direction::right) {
        const double step = stepped_back_ ? size.width() + growth_ : 0.0;
        const double end = plot_.place_of(corner_.left + box::marker_width, 0).x();
        place.moveTopLeft({end - size.width() - step, middle_row - size.height() / 2});
    } else {
        place.moveTopLeft({plot_.place_of(corner_.left, 0).x(), middle_row - size.height() / 2});
    }
    QRect whole = place.toAlignedRect();
    if (direction_ == Direction::down) {
        // The tip ends above the plot.
        whole.setBottom(static_cast<int>(std::floor(place.bottom())) - 1);
    }
    setGeometry(whole);
    setFont(plot_.margin_font());
}

void Marker::come_to_front(int times) {
    if (times != times_brought_) {
        times_brought_ = times;
        raise();
    }
}

void Marker::keep_apart(Marker& inner, Marker& outer) {
    inner.outer_ = &outer;
    outer.inner_ = &inner;
    outer.make_room();
}

void Marker::make_room() {
    if (outer_) {
        outer_->make_room();
    }
    const bool covered =
        inner_ && !inner_->isHidden() && !isHidden() &&
        std::abs(plot_.place_of(0, corner_.top).y() - plot_.place_of(0, inner_->corner_.top).y()) <
            marker_height * growth_ - 1e-6;
    if (covered != stepped_back_) {
        stepped_back_ = covered;
        fit();
    }
}

QPolygonF Marker::outline() const {
    const QRectF box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    const double sharp = tip * growth_;
    switch (direction_) {
    case Direction::right:
        return {{box.topLeft(),
                 {box.right() - sharp, box.top()},
                 {box.right(), box.center().y()},
                 {box.right() - sharp, box.bottom()},
                 box.bottomLeft()}};
    case Direction::left:
        return {{box.topRight(),
                 {box.left() + sharp, box.top()},
                 {box.left(), box.center().y()},
                 {box.left() + sharp, box.bottom()},
                 box.bottomRight()}};
    case Direction::down:
        break;
    }
    return {{box.topLeft(),
             box.topRight(),
             {box.right(), box.bottom() - sharp},
             {box.center().x(), box.bottom()},
             {box.left(), box.bottom() - sharp}}};
}

void Marker::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setBrush(palette().color(QPalette::Window));
    painter.drawPolygon(outline());
    const double sharp = (tip - 2) * growth_;
    QRectF inner(rect());
    inner.adjust(direction_ == Direction::left ? sharp : 0.0, 0.0,
                 direction_ == Direction::right ? -sharp : 0.0,
                 direction_ == Direction::down ? -sharp : 0.0);
    painter.drawText(inner, Qt::AlignCenter, text());
}

void bind(Marker* marker, MarkerLabel& control) {
    marker->setObjectName(object_name(control));
    keep_shown(*marker, control, [marker, &control] {
        marker->setText(QString::fromStdString(control.caption()));
        if (control.marked()) {
            marker->mark(*control.marked());
        }
        marker->come_to_front(control.times_brought_to_front());
        show_common(*marker, control);
        marker->setVisible(control.visible() && control.marked());
        marker->make_room();
    });
}

} // namespace kv408::ui
