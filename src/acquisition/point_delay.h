#pragma once

#include "link/commands.h"

namespace kv408 {

/// How the instrument is told the delay of point `index` (1..640) of a point-by-point pass at
/// `tbresolution` picoseconds per point. The delay is index times the resolution plus 2500 ps; up
/// to 10500 ps it is sent as it is, beyond as a coarse delay times an odd divider of at least 3.
[[nodiscard]] PointDelay point_delay(int index, double tbresolution);

} // namespace kv408
