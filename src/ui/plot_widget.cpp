#include "ui/plot_widget.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include <QFontInfo>
#include <QPaintEvent>
#include <QPainter>

#include "display/box_geometry.h"
#include "ui/marker.h"
#include "ui/pixel_copy.h"
#include "ui/qt_picture_coder.h"

namespace kv408::ui {
namespace {

constexpr std::chrono::milliseconds between_paintings{12};
constexpr int margin_letters = 11; ///< height of the letters in the margin at natural size

/// The first pixel of the plot area in the plot box.
QPoint area_corner(const PlotScale& scale) {
    return {scale.edge(box::left), scale.edge(box::top)};
}

} // namespace

PlotWidget::PlotWidget(ScaledPicture picture, QWidget* parent)
    : QWidget(parent), picture_(std::move(picture)) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    pause_.setSingleShot(true);
    pause_.setTimerType(Qt::PreciseTimer);
    pause_.setInterval(between_paintings);
    connect(&pause_, &QTimer::timeout, this, [this] { show_pending(); });
    set_scale(PlotScale());
}

void PlotWidget::set_scale(const PlotScale& scale) {
    scale_ = scale;
    picture_.set_scale(scale);
    setFixedSize(size_at(scale, devicePixelRatioF()));
    for (QObject* child : children()) {
        if (auto* const marker = dynamic_cast<Marker*>(child)) {
            marker->fit();
        }
    }
    update();
}

void PlotWidget::set_dimmed(bool dimmed) {
    if (dimmed_ != dimmed) {
        dimmed_ = dimmed;
        update();
    }
}

QSize PlotWidget::size_at(const PlotScale& scale, qreal ratio) {
    const QPoint area = area_corner(scale);
    const auto units = [&](int pixels) {
        return static_cast<int>(std::ceil(pixels / ratio - 1e-9));
    };
    return {units(2 * area.x() + scale.width()),
            units(area.y() + scale.height() + scale.edge(box::below))};
}

QPointF PlotWidget::place_of(double x, double y) const {
    const QPointF from_area = QPointF(x - box::left, y - box::top) * scale_.factor();
    return (area_corner(scale_) + from_area) / devicePixelRatioF();
}

double PlotWidget::margin_growth() const {
    constexpr double steps = 4.0;
    const double unit = scale_.factor() / devicePixelRatioF();
    const double most = 2.0 * QFontInfo(font()).pixelSize() / margin_letters;
    return unit < 1.0 ? unit : std::max(1.0, std::floor(std::min(unit, most) * steps) / steps);
}

QFont PlotWidget::margin_font() const {
    QFont scaled = font();
    scaled.setBold(true);
    scaled.setPixelSize(std::max(1, static_cast<int>(margin_letters * margin_growth())));
    return scaled;
}

QPointF PlotWidget::box_place_at(QPointF on_screen) const {
    // Painted from the window's pixel on that is nearest to the widget's corner.
    const qreal ratio = devicePixelRatioF();
    const QPoint origin = (QPointF(mapTo(window(), QPoint())) * ratio).toPoint();
    const QPointF place = window()->mapFromGlobal(on_screen) * ratio - origin;
    const auto unit = [&](double at, int corner) {
        // The mouse tells whole pixels, divided by the ratio. Of two units equally near to the
        // pixel's middle the one that is drawn there counts.
        constexpr double division_error = 1e-6;
        const double middle = std::floor(at + division_error) + 0.5 - division_error;
        return (middle - corner) / scale_.factor() - 0.5;
    };
    const QPoint corner = area_corner(scale_);
    return {box::left + unit(place.x(), corner.x()), box::top + unit(place.y(), corner.y())};
}

void PlotWidget::show_changes() {
    pending_ = true;
    if (!pause_.isActive()) {
        show_pending();
    }
}

void PlotWidget::show_pending() {
    if (!pending_) {
        return;
    }
    pending_ = false;
    const std::vector<Rectangle> changed = picture_.take_changed();
    if (changed.empty()) {
        return;
    }
    const qreal unit = 1.0 / devicePixelRatioF();
    const QPoint corner = area_corner(scale_);
    QRegion region;
    if (unit == 1.0) { // all at once: one after the other takes a time that grows with its square
        std::vector<QRect> pixels;
        pixels.reserve(changed.size());
        for (const Rectangle& area : changed) {
            pixels.emplace_back(corner + QPoint(area.left, area.top),
                                QSize(area.right - area.left, area.bottom - area.top));
        }
        region.setRects(pixels.data(), static_cast<int>(pixels.size()));
    } else {
        for (const Rectangle& area : changed) {
            const QRectF pixels(corner + QPoint(area.left, area.top),
                                QSize(area.right - area.left, area.bottom - area.top));
            region += QTransform::fromScale(unit, unit).mapRect(pixels).toAlignedRect();
        }
    }
    update(region);
    pause_.start();
}

void PlotWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const Surface& surface = picture_.surface;
    const QRect target(area_corner(scale_), QSize(surface.width(), surface.height()));
    fill_margins(painter, event->region(), target);
    // From here on in device pixels, from a whole one: the picture's must not fall between them.
    const QTransform to_device = painter.deviceTransform();
    const QPoint origin = to_device.map(QPointF(0, 0)).toPoint();
    painter.setTransform(QTransform::fromTranslate(origin.x(), origin.y()) * to_device.inverted());
    const QImage image = image_of(surface);
    const qreal ratio = devicePixelRatioF();
    if (std::floor(ratio) == ratio) {
        for (const QRect& part : event->region()) {
            const QRect pixels(part.topLeft() * ratio, part.size() * ratio);
            draw_pixels(painter, (pixels & target).topLeft(), image,
                        (pixels & target).translated(-target.topLeft()));
        }
    } else { // the region's edges do not lie between pixels
        painter.drawImage(target, image);
    }
    if (dimmed_) {
        constexpr int veil_alpha = 160;
        QColor veil = palette().color(QPalette::Window);
        veil.setAlpha(veil_alpha);
        painter.fillRect(target, veil);
    }
}

/// Fills what of `region`, in units of the window, the picture on the pixels of `target` does not
/// cover.
void PlotWidget::fill_margins(QPainter& painter, const QRegion& region, const QRect& target) const {
    const qreal unit = 1.0 / devicePixelRatioF();
    const QRectF picture = QTransform::fromScale(unit, unit).mapRect(QRectF(target));
    QRect covered = picture.toAlignedRect();
    if (QRectF(covered) != picture) {
        covered.adjust(1, 1, -1, -1);
    }
    for (const QRect& margin : region - covered) {
        painter.fillRect(margin, palette().color(QPalette::Window));
    }
}

} // namespace kv408::ui
