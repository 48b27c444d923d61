#include "config/set_up.h"

#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>
#include <variant>

namespace kv408 {
namespace {

struct Words {
    std::string_view key;
    std::string_view words;
};

/// A key of the set-up, and what people call it.
constexpr std::array words_of_keys = {
    Words{"intcr1vpos", "Voltage cursor 1"},
    Words{"intcr1hpos", "Time cursor 1"},
    Words{"intcr2vpos", "Voltage cursor 2"},
    Words{"intcr2hpos", "Time cursor 2"},
    Words{"cursorselect", "Cursors measure"},
    Words{"TabStrip3", "Cursors"},
    Words{"trigpos1", "Trigger level of TRIG1"},
    Words{"trigpos2", "Trigger level of TRIG2"},
    Words{"hyst1", "Hysteresis of TRIG1"},
    Words{"hyst2", "Hysteresis of TRIG2"},
    Words{"trigeredge", "Trigger edge"},
    Words{"trigsource", "Trigger source"},
    Words{"ch1text.top", "CH1 position"},
    Words{"ch2text.top", "CH2 position"},
    Words{"ch1vdiv", "CH1 V/div"},
    Words{"ch2vdiv", "CH2 V/div"},
    Words{"inviatr1", "CH1 Input Via Trigger"},
    Words{"inviatr2", "CH2 Input Via Trigger"},
    Words{"invert1", "CH1 Invert"},
    Words{"invert2", "CH2 Invert"},
    Words{"ch1enable", "CH1"},
    Words{"ch2enable", "CH2"},
    Words{"horpos", "CH1 delay"},
    Words{"horpos2", "CH2 delay"},
    Words{"slenps1", "Wheel moves the delay of CH1"},
    Words{"slenps2", "Wheel moves the delay of CH2"},
    Words{"seltimediv", "Time/div"},
    Words{"eyeon", "Draw Dot"},
    Words{"gridenable", "Grid On"},
    Words{"persist", "Persistence"},
    Words{"average", "Filter Avg."},
    Words{"TabStrip2", "Wheel turns"},
    Words{"displaymeas", "Measure"},
    Words{"cmbmeas(0)", "Measurement 1"},
    Words{"cmbmeas(1)", "Measurement 2"},
    Words{"cmbmeas(2)", "Measurement 3"},
    Words{"chkmeasanno", "Marked measurement"},
    Words{"colorch1", "Colour of CH1"},
    Words{"colorch2", "Colour of CH2"},
    Words{"colorbgnd", "Colour of the background"},
    Words{"colorcursor", "Colour of texts"},
    Words{"colordivbgnd", "Colour behind texts"},
    Words{"colorgrid", "Colour of the grid"},
    Words{"colorannos", "Colour of annotations"},
    Words{"persisttime", "Earlier sweeps shown"},
    Words{"snapshotpath", "Folder for snapshots"},
    Words{"snapshotdialog", "Always show Save-Dialog"},
    Words{"snapshotinvert", "Invert Colors"},
    Words{"trtout", "Time-out"},
    Words{"delaytrttdis", "Additional Delay"},
    Words{"adcspeed", "Speed opt."},
};

/// What `control` shows, for kinds that show a word or two; empty for others.
std::string shown_on(Control& control) {
    const AnyControl any = control.kind();
    if (const auto* const list = std::get_if<ListBox*>(&any)) {
        return (*list)->text();
    }
    if (const auto* const box = std::get_if<CheckBox*>(&any)) {
        return (*box)->checked() ? "on" : "off";
    }
    if (const auto* const strip = std::get_if<TabStrip*>(&any)) {
        const int selected = (*strip)->selected();
        return selected == 0 ? std::string()
                             : (*strip)->tabs()[static_cast<std::size_t>(selected - 1)].caption;
    }
    if (const auto* const text = std::get_if<TextBox*>(&any)) {
        return (*text)->text();
    }
    return {};
}

std::string words_of_key(const FrontPanel& panel, const std::string& key) {
    std::string words = key;
    for (const Words& row : words_of_keys) {
        if (row.key == key) {
            words = row.words;
        }
    }
    for (Control* const control : panel.all) {
        const bool kept = control->about().line > 0;
        if ((kept ? control->key() : control->name()) == key) {
            const std::string shown = shown_on(*control);
            return shown.empty() ? words : words + ' ' + shown;
        }
    }
    return words;
}

/// The values of `set_up` by key.
std::map<std::string, std::string> values_of(const PanelSetUp& set_up) {
    std::map<std::string, std::string> values = {{"trtout", set_up.trigger_time_out},
                                                 {"delaytrttdis", set_up.additional_delay},
                                                 {"adcspeed", set_up.speed ? "1" : "0"}};
    std::string_view lines = set_up.settings;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        lines.remove_prefix(std::min(line.size() + 1, lines.size()));
        const std::size_t tab = line.find('\t');
        if (tab != std::string_view::npos) {
            values[std::string(line.substr(0, tab))] += line.substr(tab + 1);
        }
    }
    return values;
}

} // namespace

PanelSetUp set_up_of(const FrontPanel& panel, std::string settings) {
    return {.settings = std::move(settings),
            .trigger_time_out = panel.trtout.text(),
            .additional_delay = panel.delaytrttdis.text(),
            .speed = panel.adcspeed.checked()};
}

void put_unkept(FrontPanel& panel, const PanelSetUp& set_up) {
    if (panel.trtout.text() != set_up.trigger_time_out) {
        panel.trtout.set_text(set_up.trigger_time_out);
        panel.trtout.leave();
    }
    if (panel.delaytrttdis.text() != set_up.additional_delay) {
        panel.delaytrttdis.set_text(set_up.additional_delay);
        panel.delaytrttdis.leave();
    }
    if (panel.adcspeed.checked() != set_up.speed) {
        panel.adcspeed.press(set_up.speed);
    }
}

std::map<std::string, std::string> differences(const PanelSetUp& one, const PanelSetUp& other) {
    std::map<std::string, std::string> changed;
    if (one == other) {
        return changed;
    }
    const auto before = values_of(one);
    const auto after = values_of(other);
    for (const auto& [key, value] : after) {
        const auto found = before.find(key);
        if (found == before.end() || found->second != value) {
            changed.emplace(key, value);
        }
    }
    for (const auto& [key, value] : before) {
        if (!after.contains(key)) {
            changed.emplace(key, std::string());
        }
    }
    return changed;
}

std::string words_of(const FrontPanel& panel, const std::map<std::string, std::string>& changed) {
    constexpr std::size_t most_named = 3;
    if (changed.size() > most_named) {
        return std::to_string(changed.size()) + " settings";
    }
    std::string words;
    for (const auto& [key, value] : changed) {
        words += (words.empty() ? "" : ", ") + words_of_key(panel, key);
    }
    return words;
}

} // namespace kv408
