#pragma once

#include "display/picture_coder.h"

namespace kv408 {

/// Encodes pictures where there is no window system. It has no letters to write with.
class StbPictureCoder : public PictureCoder {
public:
    std::string png(const Surface& picture) override;

    /// The strip stays empty: lines of text are asked for in a dialog only.
    Surface with_lines(const Surface& picture, const std::vector<TextLine>& lines,
                       Colour background) override;
};

} // namespace kv408
