#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "link/device_link.h"
#include "panel/adjust.h"
#include "panel/device_list.h"
#include "panel/display_controls.h"
#include "panel/front_panel.h"
#include "panel/time_base.h"
#include "panel/trigger.h"
#include "panel/vertical.h"
#include "support/fake_bridge.h"
#include "support/fake_host.h"
#include "support/fake_measuring.h"
#include "support/fake_screen.h"
#include "support/virtual_clock.h"

namespace kv408 {

using Texts = std::vector<std::string>;

/// The front panel, over an opened fake instrument that acknowledges
/// every frame.
struct PanelRig {
    PanelRig() {
        link.on_listing(
            [this](const DeviceListing& devices) { show_devices(panel.device, devices); });
        vertical.fill_lists();
        time_base.fill_list();
        panel.trigsource.set_entries({"TRIG1", "TRIG2"});
        panel.trigeredge.set_entries({"Positive", "Negative"});
        link.finddevice();
        link.select_and_open();
        bridge.acknowledge_all();
        forget();
    }

    /// Forgets what was sent, shown and drawn so far.
    void forget() {
        bridge.calls.clear();
        boxes.shown.clear();
        screen.calls.clear();
    }

    /// Chooses the entry `text` of `list`, which has it.
    static void choose(ListBox& list, const std::string& text) {
        const auto& entries = list.entries();
        for (std::size_t index = 0; index < entries.size(); ++index) {
            if (entries[index] == text) {
                list.set_index(static_cast<int>(index));
                return;
            }
        }
        throw std::logic_error("no entry " + text);
    }

    VirtualClock clock;
    FakeBridge bridge{clock};
    FakeMessageBoxes boxes;
    FakeWindowMessages messages;
    FakeScreen screen;
    FakeMeasuring measuring;
    ProgramState program;
    AcquisitionState acquisition;
    TimeBaseState time_base_state;
    Channels channels;
    TriggerState trigger_state;
    CursorState cursors;
    FrontPanel panel;
    DeviceLink link{bridge, clock, boxes, program};
    Surroundings around{.panel = panel,
                        .channels = channels,
                        .trigger = trigger_state,
                        .cursors = cursors,
                        .time_base = time_base_state,
                        .acquisition = acquisition,
                        .link = link,
                        .clock = clock,
                        .boxes = boxes,
                        .messages = messages,
                        .screen = screen,
                        .measuring = measuring};
    Vertical vertical{around};
    Trigger trigger{around};
    Adjust adjust{around, vertical, trigger};
    TimeBase time_base{around, trigger, adjust};
    DisplayControls display_controls{around};
};

/// The panel as start-up leaves it: "0.1V", "20ns/div", positive edge, TRIG1.
struct StartedPanelRig : PanelRig {
    StartedPanelRig() {
        for (ChannelControls& controls : panel.channel) {
            choose(controls.vdiv, "0.1V");
        }
        choose(panel.trigeredge, "Positive");
        choose(panel.trigsource, "TRIG1");
        choose(panel.seltimediv, "20ns/div");
        forget();
    }
};

} // namespace kv408
