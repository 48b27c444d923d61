#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <string>

#include "analysis/cursor_readouts.h"
#include "host/clock.h"
#include "measure/clipping.h"
#include "panel/controls.h"
#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/cursor_state.h"
#include "state/sweeps.h"
#include "state/time_base_state.h"

namespace kv408 {

/// The controls of the window of read-outs, and the marks that it puts at the plot's edge.
struct ReadoutsControls {
    Button mnureadouts{"mnureadouts"};          ///< Tools: opens it
    Label lblReadoutsNames{"lblReadoutsNames"}; ///< line by line what the values are
    Label lblReadoutsValues{"lblReadoutsValues"};
    CheckBox chkClippingMark{"chkClippingMark"};      ///< marks clipping at the plot's edge
    Label lblReadoutsClipping{"lblReadoutsClipping"}; ///< which channels clip
    /// By channel at the upper edge, where the trace leaves the scale upwards; and at the lower.
    std::array<Label, 2> above{Label("lblClipAbove1"), Label("lblClipAbove2")};
    std::array<Label, 2> below{Label("lblClipBelow1"), Label("lblClipBelow2")};
};

/// The window `frmReadouts`: what both time cursors tell together with the traces, and which
/// channels leave the instrument's scale.
class ReadoutsDialog {
public:
    /// What it tells of; all outlives it.
    struct Source {
        const FrontPanel& panel;
        const Sweeps& sweeps;
        const Samples& samples;
        const Channels& channels;
        const CursorState& cursors;
        const TimeBaseState& time_base;
        const AcquisitionState& acquisition;
    };

    /// Tells of `source`, of some of it at most as often as people read by `clock`.
    ReadoutsDialog(const Source& source, const Clock& clock);
    ReadoutsDialog(const ReadoutsDialog&) = delete;
    ReadoutsDialog& operator=(const ReadoutsDialog&) = delete;

    [[nodiscard]] ReadoutsControls& controls() { return controls_; }

    /// Opens the window; one that is open already is only brought to the front.
    void open();
    [[nodiscard]] bool is_open() const { return open_; }

    /// Closes it; the marks stay on or off.
    void close() { open_ = false; }

    /// Whether the time cursors are shown; without them there is nothing between and at them.
    [[nodiscard]] bool has_time_cursors() const;

    /// The time between them, seconds.
    [[nodiscard]] double interval() const;

    /// Where they cross the trace of `channel`.
    [[nodiscard]] CursorCrossings crossings(Channel channel) const;

    /// Brings values and marks up to date, the values not more often than people read.
    void tick_over();

    /// Brings values and marks up to date now.
    void refresh();

    /// Sets what shows the window and brings it to the front.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }

private:
    [[nodiscard]] Clipping shown_clipping(Channel channel);
    [[nodiscard]] std::string values() const;
    void mark_clipping();
    void show_mark(Label& mark, Channel channel, bool visible) const;

    Source source_;
    const Clock& clock_;
    ReadoutsControls controls_;
    ClippingWatch clipping_;
    bool open_ = false;
    std::chrono::nanoseconds refreshed_{0};
    std::function<void()> show_;
};

} // namespace kv408
