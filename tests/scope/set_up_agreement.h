#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "panel/adjust.h"
#include "panel/time_base.h"
#include "scope/differences.h"
#include "scope/parts.h"
#include "simulator/settings.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {

/// The set-up in the instrument against that on the panel: trigger.
inline void compare_trigger(const Parts& parts, const simulator::TriggerSettings& sent,
                            Differences& differences) {
    const FrontPanel& panel = parts.panel;
    const auto source = static_cast<std::size_t>(panel.trigsource.index());
    differences.compare("trigger input", sent.input, source);
    differences.compare("rising edge", sent.rising, panel.trigeredge.text() == "Positive");
    differences.compare("trigger level", sent.level_mv,
                        parts.trigger_state.saved_trigpos.at(source) - 2048);
    differences.compare("hysteresis", sent.hysteresis_mv, panel.shyst.value());
    if (!panel.trtout.faulty()) {
        differences.compare(
            "trigger time-out", sent.time_out_us,
            std::clamp(round_to_int32(leading_number(panel.trtout.text())), 10, 65535));
    }
}

/// The set-up in the instrument against that on the panel: gain ranges, delays and positions.
inline void compare_channels(const Parts& parts, const simulator::Settings& sent,
                             Differences& differences) {
    constexpr int finest_of_low_gain = 2;
    constexpr std::size_t low_range = 0;
    constexpr std::size_t high_range = 1;
    for (std::size_t index = 0; index < 2; ++index) {
        const ChannelControls& controls = parts.panel.channel.at(index);
        const ChannelState& state = parts.channels.at(index);
        const std::string& name = controls.label.caption();
        differences.compare(name + " range", sent.range.at(index),
                            controls.vdiv.index() <= finest_of_low_gain ? low_range : high_range);
        differences.compare(
            name + " delay", sent.offset_ps.at(index),
            controls.psofset.faulty()
                ? state.delay
                : std::clamp(round_to_int32(leading_number(controls.psofset.text())), 0, 65535));
        differences.compare(name + " marker", controls.text.marked().value_or(-1),
                            static_cast<int>(state.pos));
        differences.compare(name + " offset code", state.offsetdac, offset_code(state));
        differences.compare(name + " delay in points", state.uploaded_delaypts, state.delaypts);
    }
}

/// The set-up in the instrument against that on the panel: time base, and the state word that it
/// leads to.
inline void compare_time_base(const Parts& parts, const simulator::Settings& sent,
                              Differences& differences) {
    const auto rows = time_base_rows();
    const auto row = std::find_if(rows.begin(), rows.end(), [&parts](const TimeBaseRow& entry) {
        return entry.text == parts.panel.seltimediv.text();
    });
    differences.expect("no such time base", row != rows.end());
    if (row == rows.end()) {
        return;
    }
    differences.compare("resolution", sent.resolution_ps, static_cast<int>(row->tbresolution));
    const std::string& state = parts.acquisition.scopestate;
    differences.expect("the state word is " + state,
                       row->pointmode ? state == "scope"
                                      : state == "scopech1f" || state == "scopech2f");
}

/// The adjust wheel against the quantity that it turns, and the cursors against their limits.
inline void compare_wheel(const Parts& parts, Differences& differences) {
    const std::string key = parts.panel.tabstrip2.selected_key();
    const int value = parts.panel.slider1.Value();
    const CursorState& cursors = parts.cursor_state;
    for (std::size_t index = 0; index < 2; ++index) {
        if (key == parts.panel.channel.at(index).label.caption()) {
            differences.compare("wheel", value, parts.channels.at(index).marker_wheel);
        }
        differences.expect("a cursor row is off the plot",
                           cursors.vpos.at(index) >= 0 && cursors.vpos.at(index) <= 512);
        differences.expect("a cursor column is off the plot",
                           cursors.hpos.at(index) >= 0 && cursors.hpos.at(index) <= 640);
    }
    if (key == "TRIG") {
        differences.compare("wheel", value, parts.trigger_state.trigwheel);
    }
    differences.expect("cursor mode and cursor tab disagree",
                       (cursors.cursormode == cursor_mode::none) ==
                           (parts.panel.tabstrip3.selected() == 3));
}

/// What the instrument has been set to, what the panel shows and what the program works with, a
/// few ticks after the last change while it sweeps: all that does not agree.
inline std::vector<std::string> set_up_differences(const Parts& parts,
                                                   const simulator::Settings& sent) {
    Differences differences;
    compare_trigger(parts, sent.trigger, differences);
    compare_channels(parts, sent, differences);
    compare_time_base(parts, sent, differences);
    compare_wheel(parts, differences);
    return differences.texts();
}

} // namespace kv408
