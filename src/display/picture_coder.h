#pragma once

#include <string>
#include <vector>

#include "display/surface.h"

namespace kv408 {

/// A piece of text in a picture.
struct PictureText {
    std::string text; ///< UTF-8
    Colour colour;

    friend bool operator==(const PictureText&, const PictureText&) = default;
};

/// Pieces of text beside each other.
using TextLine = std::vector<PictureText>;

/// Encodes pictures in formats that need more than the program itself has.
class PictureCoder {
public:
    virtual ~PictureCoder() = default;

    /// `picture` as the bytes of a PNG file; empty when that failed.
    virtual std::string png(const Surface& picture) = 0;

    /// `picture` made higher by a strip in the colour `background`, with `lines` under each other.
    virtual Surface with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                               Colour background) = 0;
};

} // namespace kv408
