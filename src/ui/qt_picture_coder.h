#pragma once

#include <QImage>

#include "display/picture_coder.h"

namespace kv408::ui {

/// The pixels of `surface` as an image that must not outlive it.
[[nodiscard]] QImage image_of(const Surface& surface);

/// Encodes pictures by Qt.
class QtPictureCoder : public PictureCoder {
public:
    std::string png(const Surface& picture) override;
    Surface with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                       Colour background) override;
};

} // namespace kv408::ui
