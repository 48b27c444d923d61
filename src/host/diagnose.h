#pragma once

#include <functional>
#include <string>

namespace kv408 {

/// Tells every device of this computer that could be the instrument, with what keeps the program
/// from reaching it and what cures that, in lines for a person to read. Looks anew each time, at
/// the cost of some milliseconds; never throws. An empty function where there is nowhere to look.
using Diagnose = std::function<std::string()>;

} // namespace kv408
