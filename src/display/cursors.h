#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "panel/adjust.h"
#include "panel/front_panel.h"
#include "state/channel_state.h"
#include "state/cursor_state.h"

namespace kv408 {

/// `n` screen columns as seconds at the time-base text `time_per_division`, three digits and "s";
/// an unknown text gives an empty one.
[[nodiscard]] std::string deltacursorhor(std::int16_t n, const std::string& time_per_division);

/// Writes the three cursor read-outs for the selected cursor type: the difference, and each
/// cursor's own value.
void show_cursor_readouts(FrontPanel& panel, const Channels& channels, const CursorState& cursors);

/// The cursor type tabs and the cursor channel list.
class Cursors {
public:
    /// Connects them.
    Cursors(FrontPanel& panel, CursorState& cursors, Adjust& adjust, Screen& screen);

    /// A cursor type was chosen: voltage, time or off.
    void TabStrip3_Click();

    /// A cursor channel was chosen.
    void combocursorselect_Click();

private:
    void offer_cursors(std::int16_t first_mode);
    void withdraw_cursors();
    void show_readouts(bool visible);

    FrontPanel& panel_;
    CursorState& cursors_;
    Adjust& adjust_;
    Screen& screen_;
};

} // namespace kv408
