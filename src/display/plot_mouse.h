#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "panel/adjust.h"
#include "panel/front_panel.h"
#include "state/channel_state.h"
#include "state/cursor_state.h"
#include "state/trigger_state.h"

namespace kv408 {

/// Dragging with the left mouse button on and around the plot: the channels' zero-line markers,
/// the trigger-level marker, and the cursor lines. Each drag turns the adjust wheel of its tab and
/// lets go of it at the end, so that it changes exactly what the wheel would. Coordinates are units
/// of the plot and fractions of them: a place is the middle of a pixel, whatever the scale.
class PlotMouse {
public:
    /// How near to a cursor line the mouse must be to grab it, units.
    static constexpr int grab_distance = 4;

    /// Whether the cursor line in unit `line` is grabbed from `at`, a place along the same axis.
    [[nodiscard]] static bool reaches(double at, int line);

    PlotMouse(FrontPanel& panel, const Channels& channels, CursorState& cursors, Adjust& adjust,
              Screen& screen)
        : panel_(panel), channels_(channels), cursors_(cursors), adjust_(adjust), screen_(screen) {}

    /// Mouse pressed on the marker of `channel`, `y` below a fixed place of the marker.
    void chtext_MouseDown(Channel channel, double y);
    /// Mouse moved with the button held; `y` below the same place of the marker as it is now.
    void chtext_MouseMove(Channel channel, double y);
    /// Mouse let go.
    void chtext_MouseUp();

    /// The same for the trigger-level marker.
    void trigertext_MouseDown(double y);
    void trigertext_MouseMove(double y);
    void trigertext_MouseUp();

    /// Mouse pressed at (`x`, `y`) of the plot area. True when a cursor line was grabbed: that
    /// cursor is then the active one; with `together` both move until the mouse is let go.
    bool plot_MouseDown(double x, double y, bool together);
    /// Mouse moved to (`x`, `y`) with the button held.
    void plot_MouseMove(double x, double y);
    /// Mouse let go.
    void plot_MouseUp();

private:
    void grab(std::string_view key);
    [[nodiscard]] bool turns_grabbed() const;
    [[nodiscard]] bool still_held() const;
    [[nodiscard]] bool on_line(std::size_t cursor, double x, double y) const;
    void turn_to_row(double row);
    void move_both(int distance);

    FrontPanel& panel_;
    const Channels& channels_;
    CursorState& cursors_;
    Adjust& adjust_;
    Screen& screen_;
    std::string_view grabbed_;  ///< key of the tab whose quantity is dragged
    double grab_offset_ = 0.0;  ///< `y` where the dragged marker was grabbed
    bool holding_ = false;      ///< a cursor line is held
    std::size_t held_ = 0;      ///< which one
    bool held_voltage_ = false; ///< it was a voltage cursor's, and not a time cursor's
    int last_x_ = 0;            ///< unit as far as which both cursors have followed
    int last_y_ = 0;
    std::int16_t mode_before_ = 0; ///< cursor mode to return to after moving both
};

} // namespace kv408
