#include "painter_picture.h"

#include <algorithm>

#include <QPainter>

#include "display/graticule.h"
#include "display/persistence_colours.h"
#include "state/plot_geometry.h"

namespace kv408::bench {
namespace {

QPen pen_of(const QColor& colour, int width) {
    QPen pen(colour);
    pen.setWidth(width);
    // The cheapest joins and ends: they do not matter at a width of one pixel, and at others they
    // are what costs least.
    pen.setJoinStyle(Qt::BevelJoin);
    pen.setCapStyle(Qt::FlatCap);
    return pen;
}

QPolygon polygon_of(const std::vector<Point>& points) {
    QPolygon polygon;
    for (const Point& point : points) {
        polygon.append(QPoint(point.x, point.y));
    }
    return polygon;
}

QImage grid_image(const ColourTable& colours, const PlotScale& scale) {
    Surface surface(scale.width(), scale.height());
    draw_graticule(UnitPainter(Canvas(surface), scale), pixel_of(colours.background),
                   pixel_of(colours.grid), true);
    QImage image(scale.width(), scale.height(), QImage::Format_RGB32);
    for (int y = 0; y < scale.height(); ++y) {
        for (int x = 0; x < scale.width(); ++x) {
            image.setPixel(x, y, surface.at(x, y));
        }
    }
    return image;
}

} // namespace

PainterPicture::PainterPicture(ScopeScene& scene)
    : grid_(grid_image(scene.colours(), scene.picture().scale())),
      display_(grid_.size(), QImage::Format_RGB32),
      trace_(grid_.size(), QImage::Format_ARGB32_Premultiplied) {
    const int width = scene.picture().scale().line_width();
    const ColourTable& colours = scene.colours();
    for (const Channel channel : both_channels) {
        const Colour live = colours.channel(channel);
        const PersistenceColours faded =
            persistence_colours(live, colours.background, scene.depth());
        for (std::size_t sweep = scene.sweeps().size(); sweep-- > 0;) {
            const Colour colour = sweep == 0 ? live : faded[sweep - 1];
            // The background colour is what is copied transparently.
            lines_[channel].push_back(
                {polygon_of(scene.sweeps()[sweep][channel]),
                 pen_of(colour == colours.background
                            ? QColor(Qt::transparent)
                            : QColor(red_of(colour), green_of(colour), blue_of(colour)),
                        width)});
        }
    }
}

void PainterPicture::draw() {
    QPainter painter(&display_);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(0, 0, grid_);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    for (const std::size_t channel : {std::size_t{ch2}, std::size_t{ch1}}) {
        draw_trace(lines_[channel]);
        painter.drawImage(0, 0, trace_);
    }
}

void PainterPicture::draw_columns(int first, int count) {
    const QRect columns = QRect(first, 0, count, plot::height).intersected(display_.rect());
    QPainter painter(&display_);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(columns.topLeft(), grid_, columns);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    for (const std::size_t channel : {std::size_t{ch2}, std::size_t{ch1}}) {
        draw_trace_columns(lines_[channel], columns);
        painter.drawImage(columns.topLeft(), trace_, columns);
    }
}

void PainterPicture::draw_trace_columns(const std::vector<Line>& lines, const QRect& columns) {
    QPainter painter(&trace_);
    painter.setClipRect(columns);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(columns, Qt::transparent);
    for (const Line& line : lines) {
        painter.setPen(line.pen);
        // Point n lies in column n; the neighbours' lines reach into the columns too.
        const int before = std::max(0, columns.left() - 1);
        painter.drawPolyline(line.points.mid(before, columns.right() + 2 - before));
    }
}

void PainterPicture::draw_trace(const std::vector<Line>& lines) {
    trace_.fill(Qt::transparent);
    QPainter painter(&trace_);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const Line& line : lines) {
        painter.setPen(line.pen);
        painter.drawPolyline(line.points);
    }
}

} // namespace kv408::bench
