#pragma once

#include <string>

#include "display/packed_picture.h"
#include "display/surface.h"

namespace kv408 {

/// `picture` as the bytes of a Windows bitmap file: 24 bits per pixel, uncompressed, the bottom row
/// first, each row filled up with zeros to a multiple of four bytes.
[[nodiscard]] std::string bitmap_file(const Surface& picture);

/// The same, made part by part.
class BitmapParts {
public:
    /// The file of `picture`.
    explicit BitmapParts(PackedPicture picture);

    /// How many bytes it has.
    [[nodiscard]] std::size_t size() const;

    /// Its next bytes, 64 KiB or a row more; less at the end, and none after that.
    [[nodiscard]] std::string next();

private:
    PackedPicture picture_;
    int rows_left_;
    bool begun_ = false;
};

} // namespace kv408
