#pragma once

#include <iosfwd>
#include <memory>

#include "host/clock.h"
#include "link/library_bridge.h"

namespace kv408 {

/// The bridge to instruments on this machine: the bridge library called `library`, or, on systems
/// that have a driver for the bridge as a serial port, that port where no such library is found. A
/// library that is found and cannot be used is kept and tells its own trouble. `clock` and `log`,
/// which gets remarks for whoever looks for a fault, outlive the bridge.
[[nodiscard]] std::unique_ptr<Bridge> make_bridge(const Clock& clock, std::ostream& log,
                                                  const std::string& library = bridge_library_name);

} // namespace kv408
