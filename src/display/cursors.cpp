#include "display/cursors.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "panel/time_base.h"
#include "state/engineering_format.h"
#include "state/plot_geometry.h"
#include "state/samples.h"

namespace kv408 {
namespace {

constexpr int readout_digits = 3;
constexpr int voltage_tab = 1;
constexpr int time_tab = 2;

std::string volts_text(double millivolts) {
    return engformat(millivolts / 1000.0, readout_digits) + "V";
}

void show_voltages(FrontPanel& panel, const ChannelState& channel, const CursorState& cursors) {
    const double zero_row = (zero_volt_code - channel.offsetdac) * channel.scale * channel.vtfactor;
    const auto millivolts = [&](std::int16_t row) {
        return (plot::centre_y - (zero_row + row)) / channel.pixpermv;
    };
    const auto& [first, second] = cursors.vpos;
    panel.centerfr.set_caption("Delta Cursor : " +
                               volts_text(std::abs(second - first) / channel.pixpermv));
    panel.lblc1.set_caption("C1: " + volts_text(millivolts(first)));
    panel.lblc2.set_caption("C2: " + volts_text(millivolts(second)));
}

void show_times(FrontPanel& panel, const CursorState& cursors) {
    const std::string time_base = panel.seltimediv.text();
    const auto& [first, second] = cursors.hpos;
    const auto distance = static_cast<std::int16_t>(std::abs(second - first));
    panel.centerfr.set_caption("Delta Cursor: " + deltacursorhor(distance, time_base));
    panel.lblc1.set_caption("C1: " + deltacursorhor(first, time_base));
    panel.lblc2.set_caption("C2: " + deltacursorhor(second, time_base));
}

void remove_tab(TabStrip& strip, std::string_view key) {
    int position = 0;
    if (!hasnotab(strip, key, position)) {
        strip.remove(position);
    }
}

} // namespace

std::string deltacursorhor(std::int16_t n, const std::string& time_per_division) {
    for (const TimeBaseRow& row : time_base_rows()) {
        if (row.text == time_per_division) {
            return engformat(n / row.samplerate, readout_digits) + "s";
        }
    }
    return {};
}

void show_cursor_readouts(FrontPanel& panel, const Channels& channels, const CursorState& cursors) {
    const int tab = panel.tabstrip3.selected();
    if (tab == voltage_tab) {
        show_voltages(panel, channels[cursors.channel], cursors);
    } else if (tab == time_tab) {
        show_times(panel, cursors);
    }
}

Cursors::Cursors(FrontPanel& panel, CursorState& cursors, Adjust& adjust, Screen& screen)
    : panel_(panel), cursors_(cursors), adjust_(adjust), screen_(screen) {
    panel.tabstrip3.on_click([this] { TabStrip3_Click(); });
    panel.combocursorselect.on_click([this] { combocursorselect_Click(); });
}

void Cursors::TabStrip3_Click() {
    const int tab = panel_.tabstrip3.selected();
    if (tab == voltage_tab) {
        offer_cursors(cursor_mode::voltage_1);
    } else if (tab == time_tab) {
        offer_cursors(cursor_mode::time_1);
    } else {
        withdraw_cursors();
    }
    adjust_.TabStrip2_Click();
}

void Cursors::offer_cursors(std::int16_t first_mode) {
    constexpr std::size_t tabs_with_cursors = 5;
    if (panel_.tabstrip2.tabs().size() < tabs_with_cursors) {
        panel_.tabstrip2.add({std::string(adjust_key::cursor_1), "Cursor 1"});
        panel_.tabstrip2.add({std::string(adjust_key::cursor_2), "Cursor 2"});
    }
    const std::string key = panel_.tabstrip2.selected_key();
    const bool second = key == adjust_key::cursor_2;
    cursors_.cursormode = static_cast<std::int16_t>(second ? first_mode + 1 : first_mode);
    if (!second && key != adjust_key::cursor_1) {
        adjust_.select_target(adjust_key::cursor_1);
    }
    screen_.calccursors();
    show_readouts(true);
}

void Cursors::withdraw_cursors() {
    cursors_.cursormode = cursor_mode::none;
    const std::string key = panel_.tabstrip2.selected_key();
    remove_tab(panel_.tabstrip2, adjust_key::cursor_2);
    remove_tab(panel_.tabstrip2, adjust_key::cursor_1);
    if (key == adjust_key::cursor_1 || key == adjust_key::cursor_2) {
        adjust_.select_target(adjust_key::ch1);
    }
    show_readouts(false);
}

void Cursors::show_readouts(bool visible) {
    panel_.centerfr.set_visible(visible);
    panel_.lblc1.set_visible(visible);
    panel_.lblc2.set_visible(visible);
}

void Cursors::combocursorselect_Click() {
    const std::string channel = panel_.combocursorselect.text();
    if (channel == "CH1") {
        cursors_.channel = ch1;
    } else if (channel == "CH2") {
        cursors_.channel = ch2;
    }
    adjust_.sliderupdate();
}

} // namespace kv408
