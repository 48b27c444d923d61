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

/// The front panel with its handlers connected, over an opened fake instrument that acknowledges
/// every frame.
struct PanelRig {
    PanelRig() {
        link.on_listing(
            [this](const DeviceListing& devices) { show_devices(panel.device, devices); });
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
        connect_trigger_and_adjust();
        vertical.fill_lists();
        time_base.fill_list();
        panel.trigsource.set_entries({"TRIG1", "TRIG2"});
        panel.trigeredge.set_entries({"Positive", "Negative"});
        link.finddevice();
        link.select_and_open();
        bridge.acknowledge_all();
        forget();
    }

    /// Connects the TRIGGER frame, the adjust wheel and the delay boxes.
    void connect_trigger_and_adjust() {
        for (int index = 0; index < 2; ++index) {
            ChannelControls& controls = panel.channel[static_cast<std::size_t>(index)];
            controls.psofset.on_change([this, index] { adjust.psofset_Change(index); });
            controls.psofset.on_enter([this, index] { adjust.psofset_Enter(index); });
            controls.psofset.on_leave([this, index] { adjust.psofset_Leave(index); });
            controls.psofset.on_focus([this] { adjust.psofset_GotFocus(); });
            controls.slenps.on_click([this, index] { adjust.slenps_Click(index); });
        }
        panel.trigsource.on_click([this] { trigger.trigsource_Click(); });
        panel.trigeredge.on_click([this] { trigger.trigeredge_Click(); });
        panel.shyst.on_change([this] { trigger.shyst_Change(); });
        panel.trzero.on_click([this] { trigger.trzero_Click(); });
        panel.trtout.on_change([this] { trigger.trtout_Change(); });
        panel.trtout.on_enter([this] { trigger.trtout_Commit(); });
        panel.trtout.on_leave([this] { trigger.trtout_Commit(); });
        panel.delaytrttdis.on_change([this] { trigger.delaytrttdis_Change(); });
        panel.delaytrttdis.on_leave([this] { trigger.delaytrttdis_Leave(); });
        panel.tabstrip2.on_click([this] { adjust.TabStrip2_Click(); });
        panel.slider1.on_scroll([this] { adjust.Slider1_Scroll(); });
        panel.slider1.on_change([this] { adjust.Slider1_Change(); });
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
    FakeMeasuring measuring;
    ProgramState program;
    AcquisitionState acquisition;
    TimeBaseState time_base_state;
    Channels channels;
    TriggerState trigger_state;
    CursorState cursors;
    FrontPanel panel;
    DeviceLink link{bridge, clock, boxes, program};
    Vertical vertical{panel, channels, acquisition, link, screen, boxes};
    Trigger trigger{panel,       trigger_state, channels, time_base_state,
                    acquisition, link,          clock,    boxes};
    Adjust adjust{panel,
                  {.channels = channels,
                   .trigger = trigger_state,
                   .cursors = cursors,
                   .time_base = time_base_state,
                   .acquisition = acquisition},
                  vertical,
                  trigger,
                  screen,
                  measuring};
    TimeBase time_base{panel, time_base_state, acquisition, trigger, adjust, link, screen, boxes};
    DisplayControls display_controls{panel, acquisition, link, screen};
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
