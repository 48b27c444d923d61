#include "link/make_bridge.h"

#include <utility>

#ifndef _WIN32
#include "link/posix/serial_bridge.h"
#endif

namespace kv408 {

BridgeChoice make_bridge([[maybe_unused]] const Clock& clock, [[maybe_unused]] std::ostream& log,
                         const std::string& library) {
    auto bridge = std::make_unique<LibraryBridge>(library);
    BridgeChoice choice = {.library = library, .loaders_words = bridge->loaders_words()};
#ifndef _WIN32
    if (!bridge->library_found()) {
        choice.serial = true;
        choice.bridge = std::make_unique<SerialBridge>(clock, log);
        return choice;
    }
#endif
    choice.bridge = std::move(bridge);
    return choice;
}

} // namespace kv408
