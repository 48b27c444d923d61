#pragma once

#include <map>
#include <string>
#include <vector>

#include "config/setting_rows.h"
#include "panel/front_panel.h"

namespace kv408 {

/// The set-up as a whole: everything that Start would measure with, and how it is shown.
struct PanelSetUp {
    std::string settings;         ///< as the settings file has them
    std::string trigger_time_out; ///< as typed; this and what follows no settings file keeps
    std::string additional_delay; ///< as typed
    bool speed = false;           ///< "Speed opt." is checked

    friend bool operator==(const PanelSetUp&, const PanelSetUp&) = default;
};

/// The set-up that consists of `settings` and of what the panel holds besides.
[[nodiscard]] PanelSetUp set_up_of(const FrontPanel& panel, std::string settings);

/// Presses the controls of what a settings file does not keep, as far as they differ from `set_up`.
void put_unkept(FrontPanel& panel, const PanelSetUp& set_up);

/// What differs between `one` and `other`: by key of the settings file, or by control where there
/// is none, in alphabetical order, with what stands in `other`, the lines of several in one text.
[[nodiscard]] std::map<std::string, std::string> differences(const PanelSetUp& one,
                                                             const PanelSetUp& other);

/// What has been set, for people, when `changed`, which are differences to the set-up before, has
/// just been put on the panel: "CH1 V/div 50mV", "Trigger level of TRIG1, Trigger source TRIG2",
/// or of more than three how many. `rows` are those of what is kept.
[[nodiscard]] std::string words_of(const FrontPanel& panel, const std::vector<SettingRow>& rows,
                                   const std::map<std::string, std::string>& changed);

} // namespace kv408
