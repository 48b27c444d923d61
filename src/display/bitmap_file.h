#pragma once

#include <string>

#include "display/surface.h"

namespace kv408 {

/// `picture` as the bytes of a Windows bitmap file: 24 bits per pixel, uncompressed, the bottom row
/// first, each row filled up with zeros to a multiple of four bytes.
[[nodiscard]] std::string bitmap_file(const Surface& picture);

} // namespace kv408
