#pragma once

#include <array>
#include <string>
#include <variant>
#include <vector>

#include "scope/tools.h"

namespace kv408 {

/// What has been set in the tools: what the next program takes over from one whose instrument has
/// been lost, and what a reset brings back. What the tools have collected, computed, kept or loaded
/// is no part of it.
struct ToolSettings {
    /// Which of them are open.
    struct Open {
        bool statistics = false;
        bool histogram = false;
        bool jitter = false;
        bool eye = false;
        bool mask = false;
        bool spectrum = false;
    };

    /// Of each control: a check box, the index in a list, a text.
    std::vector<std::variant<bool, int, std::string>> values;
    bool density = false; ///< it collects
    Open open;
    PlotWindow histogram_window;
    std::array<std::vector<LimitRule>, 2> limits; ///< by channel and row
};

/// What is set in `tools`.
[[nodiscard]] ToolSettings settings_of(Tools& tools);

/// Sets `tools` to `settings`, by presses of what differs; the value that the statistics show is
/// chosen last, as the limits are those of the value that is chosen.
void set_tools(Tools& tools, const ToolSettings& settings);

} // namespace kv408
