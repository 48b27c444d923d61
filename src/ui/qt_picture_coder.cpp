#include "ui/qt_picture_coder.h"

#include <QBuffer>

namespace kv408::ui {

QImage image_of(const Surface& surface) {
    return {reinterpret_cast<const uchar*>(surface.pixels().data()), surface.width(),
            surface.height(), static_cast<qsizetype>(sizeof(Pixel)) * surface.width(),
            QImage::Format_RGB32};
}

std::string QtPictureCoder::png(const Surface& picture) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (!buffer.open(QIODevice::WriteOnly) || !image_of(picture).save(&buffer, "PNG")) {
        return {};
    }
    return bytes.toStdString();
}

} // namespace kv408::ui
