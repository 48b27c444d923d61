#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "link/device_link.h"
#include "panel/display_controls.h"
#include "panel/front_panel.h"
#include "panel/time_base.h"
#include "panel/vertical.h"
#include "support/fake_bridge.h"
#include "support/fake_host.h"
#include "support/fake_screen.h"
#include "support/virtual_clock.h"

namespace kv408 {

using Texts = std::vector<std::string>;

/// The front panel with its handlers connected, over an opened fake instrument that acknowledges
/// every frame.
struct PanelRig {
    PanelRig() {
        for (int index = 0; index < 2; ++index) {
            ChannelControls& controls = panel.channel[static_cast<std::size_t>(index)];
            controls.vdiv.on_click([this, index] { vertical.vdiv_Click(index); });
            controls.inviatr.on_click([this, index] { vertical.vdiv_Click(index); });
            controls.invert.on_click([this, index] { vertical.invert_Click(index); });
            controls.enable.on_click([this, index] { vertical.enable_Click(index); });
        }
        panel.seltimediv.on_click([this] { time_base.seltimediv_Click(); });
        panel.gridenable.on_click([this] { display_controls.gridenable_Click(); });
        panel.eyeon.on_click([this] { display_controls.redraw(); });
        panel.persist.on_click([this] { display_controls.redraw(); });
        panel.average.on_click([this] { display_controls.average_Click(); });
        vertical.fill_lists();
        time_base.fill_list();
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
    FakeScreen screen;
    ProgramState program;
    AcquisitionState acquisition;
    TimeBaseState time_base_state;
    Channels channels;
    FrontPanel panel;
    DeviceLink link{bridge, clock, boxes, program, panel.device};
    TimeBase time_base{panel, time_base_state, acquisition, link, screen, boxes};
    Vertical vertical{panel, channels, acquisition, link, screen, boxes};
    DisplayControls display_controls{panel, acquisition, link, screen};
};

} // namespace kv408
