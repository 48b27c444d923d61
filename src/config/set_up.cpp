#include "config/set_up.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <variant>

namespace kv408 {
namespace {

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

/// The control of `panel` that `key` is kept under, or called where it is not kept; none for what
/// no control holds.
Control* control_of(const FrontPanel& panel, const std::string& key) {
    const auto found = std::find_if(panel.all.begin(), panel.all.end(), [&](const Control* one) {
        return (one->about().line > 0 ? one->key() : one->name()) == key;
    });
    return found == panel.all.end() ? nullptr : *found;
}

/// What people call the thing at `key`, and what it shows now where that is a word or two.
std::string words_of_key(const FrontPanel& panel, const std::vector<SettingRow>& rows,
                         const std::string& key) {
    std::string words;
    std::string shown;
    if (Control* const control = control_of(panel, key)) {
        words = control->about().words;
        shown = shown_on(*control);
    } else {
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const SettingRow& one) { return one.key == key; });
        words = row == rows.end() ? std::string() : row->words;
    }
    words = words.empty() ? key : words;
    return shown.empty() ? words : words + ' ' + shown;
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

std::string words_of(const FrontPanel& panel, const std::vector<SettingRow>& rows,
                     const std::map<std::string, std::string>& changed) {
    constexpr std::size_t most_named = 3;
    if (changed.size() > most_named) {
        return std::to_string(changed.size()) + " settings";
    }
    std::string words;
    for (const auto& [key, value] : changed) {
        words += (words.empty() ? "" : ", ") + words_of_key(panel, rows, key);
    }
    return words;
}

} // namespace kv408
