#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "panel/adjust.h"
#include "panel/front_panel.h"
#include "state/channel_state.h"
#include "state/colour.h"
#include "state/cursor_state.h"
#include "state/display_settings.h"
#include "state/trigger_state.h"

namespace kv408 {

/// Everything that the settings file keeps, and the handlers that bring it back.
struct KeptSettings {
    FrontPanel& panel;
    Channels& channels;
    TriggerState& trigger;
    CursorState& cursors;
    ColourTable& colours;
    DisplaySettings& display;
    Adjust& adjust;
};

/// One key of the settings file: the one place that knows its name, how it is written and how it is
/// read.
struct SettingRow {
    int line; ///< place in the file, from 1
    std::string key;
    std::string words; ///< what people call it
    /// The values as they stand in the file, UTF-8, one for each line with the key.
    std::function<std::vector<std::string>()> write;
    /// Takes a value without the spaces around it, UTF-8, and runs what setting it runs; `first` on
    /// the first line of a file with the key. False, with nothing taken, for a value that the key
    /// cannot have.
    std::function<bool(std::string_view value, bool first)> read;
    /// Lines with the key that one file may have. Taking one may need an exchange with the
    /// instrument, and reading must end whatever bytes a file is made of.
    int most_lines = 2;
};

/// The keys in the order of the file: those of the panel's controls, as `FrontPanel` says, and of
/// what else is kept. `kept` must outlive them.
///
/// A list index, a tab, a check-box value or an option 0/1 outside its control is refused, as a
/// text that is no number and a number out of range of its type. Any other number that a user could
/// not have set becomes the nearest one that a user can set; of a colour the low 24 bits count.
[[nodiscard]] std::vector<SettingRow> setting_rows(const KeptSettings& kept);

} // namespace kv408
