#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "display/picture_coder.h"

namespace kv408 {

/// A coder that keeps the pictures and makes no real files of them.
class FakePictureCoder : public PictureCoder {
public:
    std::string png(const Surface& picture) override {
        pictures.push_back(picture);
        return bytes;
    }

    Surface with_lines(const Surface& picture, const std::vector<TextLine>& texts,
                       Colour background) override {
        lines = texts;
        Surface higher(picture.width(), picture.height() + line_height * int(texts.size()));
        std::fill(higher.pixels().begin(), higher.pixels().end(), pixel_of(background));
        std::copy(picture.pixels().begin(), picture.pixels().end(), higher.pixels().begin());
        return higher;
    }

    static constexpr int line_height = 10;
    std::vector<TextLine> lines;      ///< that were to stand under a picture last
    std::vector<Surface> pictures;    ///< every picture to encode, oldest first
    std::string bytes = "a PNG file"; ///< what each of them becomes
};

} // namespace kv408
