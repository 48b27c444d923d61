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
    const FrontPanel& panel = parts.panel;
    std::vector<std::string> shown;
    const auto add = [&shown](std::int64_t number) { shown.push_back(std::to_string(number)); };
    for (std::size_t index = 0; index < 2; ++index) {
        const ChannelControls& channel = panel.channel[index];
        const ChannelState& state = parts.channels[index];
        for (const CheckBox* box :
             {&channel.inviatr, &channel.invert, &channel.enable, &channel.slenps}) {
            add(box->checked() ? 1 : 0);
        }
        shown.insert(shown.end(), {channel.vdiv.text(), channel.vdivtext.caption(),
                                   channel.psofset.text(), channel.hor_delay.caption()});
        for (const std::int64_t number :
             {std::int64_t{state.gain}, std::int64_t{state.marker_wheel}, std::int64_t{state.pos},
              std::int64_t{state.offsetdac}, std::int64_t{channel.text.top()},
              std::int64_t{parts.cursor_state.vpos[index]},
              std::int64_t{parts.cursor_state.hpos[index]},
              std::int64_t{parts.trigger_state.saved_trigpos[index]},
              std::int64_t{parts.trigger_state.hyst[index]}}) {
            add(number);
        }
    }
    for (const MeasurementControls& slot : panel.measurement) {
        shown.push_back(slot.selector.text());
        add(slot.annotate.checked() ? 1 : 0);
    }
    for (const CheckBox* box :
         {&panel.eyeon, &panel.gridenable, &panel.persist, &panel.average, &panel.check1}) {
        add(box->checked() ? 1 : 0);
    }
    for (const Colour colour :
         {parts.colours.ch1, parts.colours.ch2, parts.colours.background, parts.colours.normal_text,
          parts.colours.text_background, parts.colours.grid, parts.colours.annotations}) {
        add(colour.value);
    }
    shown.insert(shown.end(), {panel.combocursorselect.text(), panel.trigeredge.text(),
                               panel.trigsource.text(), panel.seltimediv.text(),
                               panel.tabstrip3.selected_key(), panel.tabstrip2.selected_key(),
                               panel.trlevelmv.caption(), parts.settings.snapshotpath});
    add(parts.trigger_state.trigpos);
    add(panel.shyst.value());
    add(parts.settings.persisttime);
    add(parts.settings.snapshotdialog);
    add(parts.settings.snapshotinvert);
    return shown;
}

} // namespace kv408
