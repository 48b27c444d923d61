#pragma once

#include <string>

#include "link/make_bridge.h"

namespace kv408 {

/// Which bridge was taken and why, then every device of this computer that could be the instrument,
/// with what keeps the program from reaching it and what cures that, in lines for a person to read.
/// Looks anew each time, at the cost of some milliseconds; never throws.
[[nodiscard]] std::string diagnosis(const BridgeChoice& choice);

} // namespace kv408
