#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "panel/panel_parts.h"
#include "support/fake_machine.h"

namespace kv408 {

using Texts = std::vector<std::string>;

/// The front panel as the program builds it, over an opened fake instrument that acknowledges every
/// frame.
struct PanelRig : FakeMachine, PanelState, PanelParts {
    PanelRig() : PanelParts(static_cast<PanelState&>(*this), outside()) {
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
