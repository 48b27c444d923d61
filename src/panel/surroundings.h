#pragma once

#include "host/clock.h"
#include "host/message_boxes.h"
#include "host/window_messages.h"
#include "link/device_link.h"
#include "panel/front_panel.h"
#include "panel/measuring.h"
#include "panel/screen.h"
#include "state/acquisition_state.h"
#include "state/channel_state.h"
#include "state/cursor_state.h"
#include "state/time_base_state.h"
#include "state/trigger_state.h"

namespace kv408 {

/// What the parts of panel, acquisition and calibration work with: the controls, what these have
/// set, and whom they tell. All of it outlives the parts.
struct Surroundings {
    FrontPanel& panel;
    Channels& channels;
    TriggerState& trigger;
    CursorState& cursors;
    TimeBaseState& time_base;
    AcquisitionState& acquisition;
    DeviceLink& link;
    Clock& clock;
    MessageBoxes& boxes;
    WindowMessages& messages;
    Screen& screen;
    Measuring& measuring;
};

} // namespace kv408
