#pragma once

#include "scope/scope.h"
#include "simulator/simulation.h"
#include "support/fake_files.h"
#include "support/fake_host.h"
#include "support/fake_picture_coder.h"
#include "support/virtual_clock.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// A program whose instrument does not matter, to enter.
struct Entered {
    VirtualClock clock;
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    simulator::Simulation simulation{clock};
    FakeFiles files;
    FakeFileChoosers choosers;
    FakePictureCoder coder;
    Scope scope{Machine{clock, boxes, messages, simulation.bridge(), files, choosers, fake_places(),
                        coder}};
    ScopeDriver driver{scope};
};

} // namespace kv408::ui
