#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "scope/parts.h"

namespace kv408 {

/// The file that start-up reads and the end writes.
inline constexpr const char* settings_path = "/settings/kv408/ConfigsLM4RX.TXT";

/// Everything that the panel shows of the settings, and what its parts work with.
inline std::vector<std::string> settings_shown(const Parts& parts) {
    std::vector<std::string> shown;
    const auto add = [&shown](std::int64_t number) { shown.push_back(std::to_string(number)); };
    for (Control* const control : parts.panel.all) {
        if (const auto* const list = dynamic_cast<const ListBox*>(control)) {
            shown.push_back(list->text());
        } else if (const auto* const box = dynamic_cast<const CheckBox*>(control)) {
            // The other two are no settings.
            if (box != &parts.panel.adcspeed && box != &parts.panel.cmdcaloofset) {
                add(box->checked() ? 1 : 0);
            }
        } else if (const auto* const tabs = dynamic_cast<const TabStrip*>(control)) {
            shown.push_back(tabs->selected_key());
        }
    }
    for (std::size_t index = 0; index < 2; ++index) {
        const ChannelControls& channel = parts.panel.channel[index];
        const ChannelState& state = parts.channels[index];
        shown.insert(shown.end(), {channel.vdivtext.caption(), channel.psofset.text(),
                                   channel.hor_delay.caption()});
        for (const std::int64_t number :
             {std::int64_t{state.gain}, std::int64_t{state.marker_wheel}, std::int64_t{state.pos},
              std::int64_t{state.offsetdac}, std::int64_t{channel.text.marked().value_or(-1)},
              std::int64_t{parts.cursor_state.vpos[index]},
              std::int64_t{parts.cursor_state.hpos[index]},
              std::int64_t{parts.trigger_state.saved_trigpos[index]},
              std::int64_t{parts.trigger_state.hyst[index]}}) {
            add(number);
        }
    }
    for (const Colour colour :
         {parts.colours.ch1, parts.colours.ch2, parts.colours.background, parts.colours.normal_text,
          parts.colours.text_background, parts.colours.grid, parts.colours.annotations}) {
        add(colour.value);
    }
    shown.insert(shown.end(), {parts.panel.trlevelmv.caption(), parts.settings.snapshotpath});
    add(parts.trigger_state.trigpos);
    add(parts.panel.shyst.value());
    add(parts.settings.persisttime);
    add(parts.settings.snapshotdialog ? 1 : 0);
    add(parts.settings.snapshotinvert ? 1 : 0);
    return shown;
}

} // namespace kv408
