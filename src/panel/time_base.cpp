#include "panel/time_base.h"

#include <algorithm>
#include <string>
#include <vector>

#include "panel/set_up_change.h"

namespace kv408 {
namespace {

// Fixed by design, irregularities included: the step is the exact time per point rounded up to
// 20ns/div, down at 50, 100 and 500ns/div; 50us/div has 780125 where the rule would give 781250.
constexpr std::array<TimeBaseRow, 21> steps = {{
    {"25ps/div", "25ps", 1, 2560e9, 2.56, false},
    {"50ps/div", "50ps", 1, 1280e9, 1.28, false},
    {"100ps/div", "100ps", 2, 640e9, 1.28, false},
    {"200ps/div", "200ps", 4, 320e9, 1.28, false},
    {"500ps/div", "500ps", 8, 128e9, 1.024, false},
    {"1ns/div", "1ns", 16, 64e9, 1.024, false},
    {"2ns/div", "2ns", 32, 32e9, 1.024, false},
    {"5ns/div", "5ns", 79, 12.8e9, 1.0112, false},
    {"10ns/div", "10ns", 157, 6.4e9, 1.0048, false},
    {"20ns/div", "20ns", 313, 3.2e9, 1.0016, false},
    {"50ns/div", "50ns", 781, 1.28e9, 1.00032010243278, false},
    {"100ns/div", "100ns", 1562, 0.64e9, 1.0, false},
    {"200ns/div", "200ns", 3125, 0.32e9, 1.0, false},
    {"500ns/div", "500ns", 7812, 128e6, 1.0, true},
    {"1us/div", "1us", 15625, 64e6, 1.0, true},
    {"2us/div", "2us", 31250, 32e6, 1.0, true},
    {"5us/div", "5us", 78125, 12.8e6, 1.0, true},
    {"10us/div", "10us", 156250, 6.4e6, 1.0, true},
    {"20us/div", "20us", 312500, 3.2e6, 1.0, true},
    {"50us/div", "50us", 780125, 1.28e6, 1.0, true},
    {"100us/div", "100us", 1562500, 0.64e6, 1.0, true},
}};

} // namespace

std::span<const TimeBaseRow> time_base_rows() {
    return steps;
}

const TimeBaseRow* selected_time_base(const FrontPanel& panel) {
    const std::string selected = panel.seltimediv.text();
    const auto* const row =
        std::find_if(steps.begin(), steps.end(),
                     [&selected](const TimeBaseRow& each) { return each.text == selected; });
    return row == steps.end() ? nullptr : row;
}

TimeBase::TimeBase(const Surroundings& around, Trigger& trigger, Adjust& adjust)
    : around_(around), trigger_(trigger), adjust_(adjust) {
    around.panel.seltimediv.on_click([this] {
        seltimediv_Click();
        show_change(around_);
    });
}

void TimeBase::fill_list() {
    std::vector<std::string> entries;
    std::transform(steps.rbegin(), steps.rend(), std::back_inserter(entries),
                   [](const TimeBaseRow& row) { return std::string(row.text); });
    around_.panel.seltimediv.set_entries(std::move(entries));
}

void TimeBase::seltimediv_Click() {
    mark_changed(around_);
    const std::string text = around_.panel.seltimediv.text();
    take_values(text);
    adjust_.rescale_delays();
    around_.screen.calccursors();
    around_.panel.tdivtext.set_caption(text);
    if (around_.acquisition.pointmode) {
        withdraw_horizontal_position();
    } else {
        offer_horizontal_position();
    }
    adjust_.setadjuststep();
    trigger_.trigposupdate();
    around_.screen.refreshCH1(0);
    around_.screen.refreshCH2(0);
}

void TimeBase::take_values(std::string_view text) {
    const auto* const row =
        std::find_if(steps.begin(), steps.end(),
                     [text](const TimeBaseRow& entry) { return entry.text == text; });
    if (row == steps.end()) {
        around_.boxes.show({.text = "Invalid time base!"});
        return;
    }
    around_.panel.tdivtext.set_caption(std::string(row->short_label));
    around_.time_base.tbresolution = row->tbresolution;
    around_.time_base.samplerate = row->samplerate;
    around_.time_base.hstretch = row->hstretch;
    around_.acquisition.pointmode = row->pointmode;
}

void TimeBase::offer_horizontal_position() {
    int position = 0;
    if (hasnotab(around_.panel.tabstrip2, adjust_key::horizontal, position)) {
        around_.panel.tabstrip2.add({std::string(adjust_key::horizontal), "Hor. Position"});
    }
    for (const Channel channel : both_channels) {
        around_.panel.channel[channel].psofset.set_enabled(true);
        adjust_.show_delay_label(channel);
    }
}

void TimeBase::withdraw_horizontal_position() {
    int position = 0;
    if (!hasnotab(around_.panel.tabstrip2, adjust_key::horizontal, position)) {
        const bool selected = around_.panel.tabstrip2.selected() == position;
        around_.panel.tabstrip2.remove(position);
        if (selected) {
            adjust_.select_target(adjust_key::ch1);
        }
    }
    for (ChannelControls& controls : around_.panel.channel) {
        controls.psofset.set_enabled(false);
        controls.hor_delay.set_caption("");
    }
}

} // namespace kv408
