#include "ui/qt_picture_coder.h"

#include <algorithm>

#include <QBuffer>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>

namespace kv408::ui {

QImage image_of(const Surface& surface) {
    return {reinterpret_cast<const uchar*>(surface.pixels().data()), surface.width(),
            surface.height(), static_cast<qsizetype>(sizeof(Pixel)) * surface.width(),
            QImage::Format_RGB32};
}

Surface surface_of(const QImage& image, const QRect& part) {
    Surface surface(part.width(), part.height());
    for (int y = 0; y < part.height(); ++y) {
        const auto* const row =
            reinterpret_cast<const Pixel*>(image.constScanLine(part.top() + y)) + part.left();
        std::copy(row, row + part.width(), surface.row(y).begin());
    }
    return surface;
}

std::string QtPictureCoder::png(const Surface& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image_of(picture).save(&buffer, "PNG")) {
        return {};
    }
    return bytes.toStdString();
}

Surface QtPictureCoder::with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                                   Colour background) {
    constexpr int margin = 8;
    constexpr int text_height = 14;
    constexpr int line_height = 20;
    constexpr int column = 170;
    QImage image(picture.width(),
                 picture.height() + line_height * static_cast<int>(lines.size()) + margin,
                 QImage::Format_RGB32);
    image.fill(pixel_of(background));
    QPainter painter(&image);
    painter.drawImage(0, 0, image_of(picture));
    QFont font = QGuiApplication::font();
    font.setPixelSize(text_height);
    painter.setFont(font);
    int top = picture.height();
    for (const TextLine& line : lines) {
        int left = margin;
        for (const PictureText& piece : line) {
            const QString text = QString::fromStdString(piece.text);
            painter.setPen(QColor::fromRgb(pixel_of(piece.colour)));
            painter.drawText(QRect(left, top, image.width() - left, line_height),
                             Qt::AlignVCenter | Qt::AlignLeft, text);
            left += std::max(column, painter.fontMetrics().horizontalAdvance(text) + margin);
        }
        top += line_height;
    }
    painter.end();
    return surface_of(image, image.rect());
}

} // namespace kv408::ui
