#pragma once

#include <string>

#include "host/ending.h"
#include "link/device_link.h"
#include "panel/panel_parts.h"
#include "support/fake_bridge.h"
#include "support/fake_host.h"
#include "support/fake_measuring.h"
#include "support/fake_screen.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// What the panel's parts work with, all fakes, and the link to a fake bridge; nothing is listed or
/// opened yet.
struct FakeMachine {
    VirtualClock clock;
    FakeBridge bridge{clock};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeScreen screen;
    FakeMeasuring measuring;
    ProgramState program;
    EndingMessageBoxes ending_boxes{boxes, program};
    EndingWindowMessages ending_messages{messages, program};
    std::string diagnosis; ///< what a look at the devices tells
    DeviceLink link{bridge, clock, ending_boxes, program, [this] { return diagnosis; }};

    /// All of it, as the parts take it.
    [[nodiscard]] PanelParts::Outside outside() {
        return {.link = link,
                .clock = clock,
                .boxes = ending_boxes,
                .messages = ending_messages,
                .screen = screen,
                .measuring = measuring};
    }
};

} // namespace kv408
