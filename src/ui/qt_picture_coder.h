#pragma once

#include <QImage>

#include "display/picture_coder.h"

namespace kv408::ui {

/// The pixels of `surface` as an image that must not outlive it.
[[nodiscard]] QImage image_of(const Surface& surface);

/// A copy of the pixels of `part`, which lies within `image`, whose format is RGB32.
[[nodiscard]] Surface surface_of(const QImage& image, const QRect& part);

/// Encodes pictures by Qt.
class QtPictureCoder : public PictureCoder {
public:
    std::string png(const Surface& picture) override;
    Surface with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                       Colour background) override;
};

} // namespace kv408::ui
