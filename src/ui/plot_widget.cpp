#include "ui/plot_widget.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include <QPaintEvent>
#include <QPainter>

#include "state/plot_geometry.h"
#include "ui/marker.h"
#include "ui/qt_picture_coder.h"

namespace kv408::ui {
namespace {

constexpr std::chrono::milliseconds between_paintings{12};

Columns spanning(Columns a, Columns b) {
    if (a.empty() || b.empty()) {
        return a.empty() ? b : a;
    }
    return {std::min(a.left, b.left), std::max(a.right, b.right)};
}

} // namespace

PlotWidget::PlotWidget(const Surface& surface, QWidget* parent)
    : QWidget(parent), surface_(surface) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    pause_.setSingleShot(true);
    pause_.setTimerType(Qt::PreciseTimer);
    pause_.setInterval(between_paintings);
    connect(&pause_, &QTimer::timeout, this, [this] { show_pending(); });
    set_scale(1);
}

void PlotWidget::set_scale(int scale) {
    scale_ = std::max(scale, 1);
    setFixedSize(size_at(scale_, devicePixelRatioF()));
    update();
}

void PlotWidget::set_dimmed(bool dimmed) {
    if (dimmed_ != dimmed) {
        dimmed_ = dimmed;
        update();
    }
}

int PlotWidget::scale_for(QSizeF room, qreal ratio) {
    const double across = room.width() * ratio / plot::box_width;
    const double down = room.height() * ratio / plot::box_height;
    return std::max(1, static_cast<int>(std::floor(std::min(across, down) + 1e-9)));
}

QSize PlotWidget::size_at(int scale, qreal ratio) {
    const auto units = [&](int pixels) {
        return static_cast<int>(std::ceil(pixels * scale / ratio - 1e-9));
    };
    return {units(plot::box_width), units(plot::box_height)};
}

QPointF PlotWidget::place_of(double x, double y) const {
    return QPointF(x, y) * (scale_ / devicePixelRatioF());
}

QPoint PlotWidget::pixel_at(QPointF on_screen) const {
    const QPointF place = mapFromGlobal(on_screen) * (devicePixelRatioF() / scale_);
    return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}

void PlotWidget::show_columns(Columns columns) {
    pending_ = spanning(pending_, columns);
    if (!pause_.isActive()) {
        show_pending();
    }
}

void PlotWidget::show_pending() {
    if (pending_.empty()) {
        return;
    }
    const QPointF from = place_of(plot::left + pending_.left, plot::top);
    const QPointF to = place_of(plot::left + pending_.right, plot::top + plot::height);
    pending_ = {};
    update(QRectF(from, to).toAlignedRect());
    pause_.start();
}

void PlotWidget::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    for (QObject* child : children()) {
        if (auto* const marker = dynamic_cast<Marker*>(child)) {
            marker->fit();
        }
    }
}

void PlotWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    // From here on in device pixels, from a whole one: the picture's must not fall between them.
    const QTransform to_device = painter.deviceTransform();
    const QPoint origin = to_device.map(QPointF(0, 0)).toPoint();
    painter.setTransform(QTransform::fromTranslate(origin.x(), origin.y()) * to_device.inverted());
    const QRect target(plot::left * scale_, plot::top * scale_, surface_.width() * scale_,
                       surface_.height() * scale_);
    painter.drawImage(target, image_of(surface_));
    if (dimmed_) {
        constexpr int veil_alpha = 160;
        QColor veil = palette().color(QPalette::Window);
        veil.setAlpha(veil_alpha);
        painter.fillRect(target, veil);
    }
}

} // namespace kv408::ui
