#pragma once

#include "panel/adjust.h"
#include "panel/display_controls.h"
#include "panel/surroundings.h"
#include "panel/time_base.h"
#include "panel/trigger.h"
#include "panel/vertical.h"

namespace kv408 {

/// The controls, and what they and the acquisition have set.
struct PanelState {
    AcquisitionState acquisition;
    TimeBaseState time_base_state;
    TriggerState trigger_state;
    CursorState cursor_state;
    Channels channels;
    FrontPanel panel;
};

/// The parts of the panel, in the order in which they are built, each connected to its controls.
struct PanelParts {
    /// Whom the parts tell, and what they use of the machine.
    struct Outside {
        DeviceLink& link;
        Clock& clock;
        MessageBoxes& boxes;
        WindowMessages& messages;
        Screen& screen;
        Measuring& measuring;
    };

    /// The parts over `state`; the link shows its devices in the panel from now on.
    PanelParts(PanelState& state, const Outside& outside);

    Surroundings around;
    Vertical vertical{around};
    Trigger trigger{around};
    Adjust adjust{around, vertical, trigger};
    TimeBase time_base{around, trigger, adjust};
    DisplayControls display_controls{around};
};

} // namespace kv408
