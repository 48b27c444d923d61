#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "host/clock.h"
#include "link/library_bridge.h"

namespace kv408 {

/// The bridge to instruments on this machine, and how it came to be this one.
struct BridgeChoice {
    std::unique_ptr<Bridge> bridge = {};
    std::string library = {};       ///< name of the bridge library that was looked for
    bool serial = false;            ///< it was not found: the bridge is the kernel's serial port
    std::string loaders_words = {}; ///< why it could not be loaded; empty when it is loaded
};

/// The bridge library called `library`, or, on systems that have a driver for the bridge as a
/// serial port, that port where no such library is found. A library that is found and cannot be
/// used is kept and tells its own trouble. `clock` and `log`, which gets remarks that help to find
/// a fault, outlive the bridge.
[[nodiscard]] BridgeChoice make_bridge(const Clock& clock, std::ostream& log,
                                       const std::string& library = bridge_library_name);

} // namespace kv408
