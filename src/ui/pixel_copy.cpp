#include "ui/pixel_copy.h"

#include <cstring>

#include <QPaintEngine>

namespace kv408::ui {
namespace {

/// The image that `painter` draws on when its pixels are laid out as those of `picture`, else none.
const QImage* image_like(const QPainter& painter, const QImage& picture) {
    const QPaintDevice* const device = painter.paintEngine()->paintDevice();
    if (device->devType() != QInternal::Image || picture.format() != QImage::Format_RGB32) {
        return nullptr;
    }
    const auto* const image = static_cast<const QImage*>(device);
    const QImage::Format format = image->format();
    // The picture's pixels are opaque, so they mean the same in both.
    return format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied
               ? image
               : nullptr;
}

/// The bytes from the pixel (`x`, `y`) of `image` on.
const uchar* bytes_at(const QImage& image, int x, int y) {
    return image.constScanLine(y) + static_cast<std::ptrdiff_t>(x) * image.depth() / 8;
}

/// Has the memory that is needed soon brought near: few pixels of each row are copied, so nothing
/// else foretells the next one's.
void fetch([[maybe_unused]] const uchar* row, [[maybe_unused]] std::size_t bytes) {
#ifdef __GNUC__
    constexpr std::size_t cache_line = 64;
    for (std::size_t at = 0; at < bytes; at += cache_line) {
        __builtin_prefetch(row + at);
    }
#endif
}

} // namespace

void draw_pixels(QPainter& painter, QPoint place, const QImage& picture, QRect part) {
    const QImage* const target = image_like(painter, picture);
    const QPointF on_target = painter.deviceTransform().map(QPointF(place));
    if (target == nullptr || QPointF(on_target.toPoint()) != on_target ||
        painter.deviceTransform().m11() != 1.0 || painter.deviceTransform().m22() != 1.0) {
        painter.drawImage(place, picture, part);
        return;
    }
    const QPoint away = on_target.toPoint() - part.topLeft();
    part &= picture.rect() & target->rect().translated(-away);
    constexpr int rows_ahead = 6;
    const std::size_t bytes = sizeof(QRgb) * static_cast<std::size_t>(std::max(part.width(), 0));
    for (int row = part.top(); row <= part.bottom(); ++row) {
        if (row + rows_ahead <= part.bottom()) {
            fetch(bytes_at(picture, part.left(), row + rows_ahead), bytes);
            fetch(bytes_at(*target, part.left() + away.x(), row + rows_ahead + away.y()), bytes);
        }
        // As the painter does: asking for bytes to write to would have the image detach from it.
        auto* const to =
            const_cast<uchar*>(bytes_at(*target, part.left() + away.x(), row + away.y()));
        std::memcpy(to, bytes_at(picture, part.left(), row), bytes);
    }
}

} // namespace kv408::ui
