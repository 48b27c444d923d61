#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "config/settings_file.h"
#include "display/cursors.h"
#include "panel/delay_text.h"
#include "support/fake_files.h"
#include "support/measurement_lines.h"
#include "support/panel_rig.h"

namespace kv408 {

/// The started panel with its cursors and measurement lists and the settings file over it, on files
/// in memory.
struct SettingsRig : StartedPanelRig {
    SettingsRig() {
        panel.combocursorselect.set_entries({"CH1", "CH2"});
        panel.combocursorselect.set_index(0);
        for (MeasurementControls& slot : panel.measurement) {
            slot.selector.set_entries(measurement_entries());
            slot.selector.set_index(0);
        }
        for (int index = 0; index < 3; ++index) {
            panel.measurement[static_cast<std::size_t>(index)].annotate.on_mouse_down(
                [this, index] { press_annotation(index); });
        }
        forget();
    }

    /// A press of the mouse button on annotation box `index` leaves no other one checked.
    void press_annotation(int index) {
        pressed.push_back(index);
        for (int other = 0; other < 3; ++other) {
            if (other != index) {
                panel.measurement[static_cast<std::size_t>(other)].annotate.set_checked(false);
            }
        }
    }

    /// Reads a file with the content `bytes`.
    void load(std::string bytes) {
        files.files[loaded] = std::move(bytes);
        settings.loadconfigfile(loaded);
    }

    /// What is saved now.
    std::string save() {
        settings.saveconfigsmon("/a/saved.txt");
        return files.files["/a/saved.txt"];
    }

    static constexpr const char* loaded = "/a/setup.txt";

    FakeFiles files;
    FakeFileChoosers choosers;
    Places places = fake_places();
    ColourTable colours;
    DisplaySettings display;
    Cursors cursor_tabs{panel, cursor_state, adjust, screen};
    std::vector<int> pressed; ///< annotation boxes whose handler ran
    int cancelled = 0;        ///< how often unconfirmed edits were taken back
    int applied = 0;          ///< how often the settings were applied after loading by hand
    SettingsFile settings{
        {.panel = panel,
         .channels = channels,
         .trigger = trigger_state,
         .cursors = cursor_state,
         .colours = colours,
         .display = display,
         .adjust = adjust},
        {.files = files,
         .choosers = choosers,
         .boxes = boxes,
         .places = places,
         .clock = clock,
         .messages = messages,
         .program = program},
        {.apply = [this] { ++applied; }, .cancel_edits = [this] { ++cancelled; }}};
};

/// True when nothing on the panel stands where a user could not have put it.
inline bool is_settable(const SettingsRig& rig) {
    const auto within = [](std::int64_t value, std::int64_t lowest, std::int64_t highest) {
        return value >= lowest && value <= highest;
    };
    const auto chosen = [&](const ListBox& list) {
        return within(list.index(), 0, static_cast<int>(list.entries().size()) - 1);
    };
    const FrontPanel& panel = rig.panel;
    bool good =
        chosen(panel.trigsource) && chosen(panel.trigeredge) && chosen(panel.seltimediv) &&
        chosen(panel.combocursorselect) && within(panel.tabstrip3.selected(), 1, 3) &&
        within(panel.tabstrip2.selected(), 1, static_cast<int>(panel.tabstrip2.tabs().size())) &&
        within(panel.slider1.Value(), panel.slider1.Min(), panel.slider1.Max());
    for (std::size_t index = 0; index < 2; ++index) {
        const ChannelControls& channel = panel.channel[index];
        good = good && chosen(channel.vdiv) &&
               channel.psofset.text() ==
                   std::to_string(delay_of(channel.psofset, rig.channels[index])) &&
               within(rig.channels[index].marker_wheel, 0, 1024) &&
               within(rig.channels[index].pos, 0, 512) &&
               within(rig.cursor_state.vpos[index], 0, 512) &&
               within(rig.cursor_state.hpos[index], 0, 640) &&
               within(rig.trigger_state.saved_trigpos[index], 0, 4096) &&
               within(rig.trigger_state.hyst[index], 0, 255);
    }
    for (const MeasurementControls& slot : panel.measurement) {
        good = good && chosen(slot.selector);
    }
    for (const Colour colour :
         {rig.colours.ch1, rig.colours.ch2, rig.colours.background, rig.colours.normal_text,
          rig.colours.text_background, rig.colours.grid, rig.colours.annotations}) {
        good = good && colour.value <= 0xFFFFFF;
    }
    return good && within(rig.display.persisttime, 0, 9);
}

} // namespace kv408
