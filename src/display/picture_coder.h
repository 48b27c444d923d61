#pragma once

#include <string>

#include "display/surface.h"

namespace kv408 {

/// Encodes pictures in formats that need more than the program itself has.
class PictureCoder {
public:
    virtual ~PictureCoder() = default;

    /// `picture` as the bytes of a PNG file; empty when that failed.
    virtual std::string png(const Surface& picture) = 0;
};

} // namespace kv408
