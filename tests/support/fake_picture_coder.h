#pragma once

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

    std::vector<Surface> pictures;    ///< every picture to encode, oldest first
    std::string bytes = "a PNG file"; ///< what each of them becomes
};

} // namespace kv408
