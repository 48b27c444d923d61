#pragma once

#include "display/picture_coder.h"

namespace kv408 {

/// Encodes pictures where there is no window system. It has no letters to write with.
class StbPictureCoder : public PictureCoder {
public:
    std::string png(const Surface& picture) override;

    /// The strip below the picture stays empty: only a dialog asks for lines of text in it.
    Surface with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                       Colour background) override;
};

} // namespace kv408
