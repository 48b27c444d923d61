#pragma once

#include <string>
#include <vector>

#include "link/device_link.h"
#include "support/fake_bridge.h"
#include "support/fake_host.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// The link over a fake bridge.
struct LinkRig {
    VirtualClock clock;
    FakeBridge bridge{clock};
    FakeMessageBoxes boxes;
    ProgramState program;
    std::string diagnosis; ///< what a look at the devices tells
    DeviceLink link{bridge, clock, boxes, program, [this] { return diagnosis; }};

    /// Finds and opens the one attached instrument; what that took is forgotten.
    void open() {
        link.finddevice();
        link.select_and_open();
        bridge.calls.clear();
    }

    /// Fills the five arguments of the next command.
    void arguments(const CommandArguments& values) { link.cmdargs() = values; }
};

using Texts = std::vector<std::string>;

} // namespace kv408
