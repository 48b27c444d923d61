#include "display/surface.h"

namespace kv408 {

Surface::Surface(int width, int height)
    : width_(width), height_(height),
      pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
              pixel_of(Colour{})) {}

} // namespace kv408
