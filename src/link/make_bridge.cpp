#include "link/make_bridge.h"

#ifndef _WIN32
#include "link/serial_bridge.h"
#endif

namespace kv408 {

std::unique_ptr<Bridge> make_bridge([[maybe_unused]] const Clock& clock,
                                    [[maybe_unused]] std::ostream& log,
                                    const std::string& library) {
    auto bridge = std::make_unique<LibraryBridge>(library);
#ifndef _WIN32
    if (!bridge->library_found()) {
        return std::make_unique<SerialBridge>(clock, log, bridge->loaders_words());
    }
#endif
    return bridge;
}

} // namespace kv408
