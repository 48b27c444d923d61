#include "ui/screen_picture.h"

#include <cmath>

#include <QImage>

#include "ui/qt_picture_coder.h"

namespace kv408::ui {
namespace {

/// The shortest way that ends as far inside a pixel as `distance` does, both in units of the window
/// of `ratio` pixels each: what is painted there gets the same pixels.
int shortest_alike(int distance, qreal ratio) {
    constexpr int longest = 100; // any ratio of whole hundredths repeats itself by then
    const auto inside_pixel = [ratio](int units) {
        const qreal pixels = units * ratio;
        return pixels - std::floor(pixels);
    };
    for (int units = 0; units < longest; ++units) {
        if (std::abs(inside_pixel(units) - inside_pixel(distance)) < 1e-6) {
            return units;
        }
    }
    return 0;
}

} // namespace

Surface picture_of_screen(QWidget& screen) {
    const qreal ratio = screen.devicePixelRatioF();
    const QRect parts = screen.childrenRect();
    const QPoint in_window = screen.mapTo(screen.window(), parts.topLeft());
    const QPoint place(shortest_alike(in_window.x(), ratio), shortest_alike(in_window.y(), ratio));
    const QRect pixels =
        QRectF(QPointF(place) * ratio, QSizeF(parts.size()) * ratio).toAlignedRect();
    QImage image(pixels.right() + 1, pixels.bottom() + 1, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(screen.palette().color(QPalette::Window));
    // Pixels that lie only partly in there are painted as in the window: wholly.
    screen.render(&image, place - QPoint(1, 1), QRegion(parts.adjusted(-1, -1, 1, 1)));
    return surface_of(image, pixels);
}

} // namespace kv408::ui
