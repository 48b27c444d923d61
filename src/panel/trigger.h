#pragma once

#include <cstdint>

#include "panel/surroundings.h"

namespace kv408 {

/// How long the trigger line shows after the level was adjusted, milliseconds.
inline constexpr std::int32_t trigger_line_ms = 1000;

/// Shows the trigger line for the next second.
inline void show_trigger_line(AcquisitionState& acquisition) {
    acquisition.holdoff = true;
    acquisition.holdoff_time = trigger_line_ms;
}

/// The TRIGGER frame: source, edge, level, hysteresis and time-out, and their upload.
class Trigger {
public:
    /// Connects the controls of the TRIGGER frame but its source, which the wheel follows, and
    /// "Additional Delay".
    explicit Trigger(const Surroundings& around);

    /// The selected source: `ch1` for "TRIG1", else `ch2`.
    [[nodiscard]] Channel source() const;

    /// A source was chosen: its level and hysteresis come back and go to the instrument at once.
    void trigsource_Click();

    /// An edge was chosen; it reaches the instrument with the next set-up.
    void trigeredge_Click();

    /// The hysteresis slider was moved.
    void shyst_Change();

    /// "set to zero".
    void trzero_Click();

    /// The time-out box has another text: it is marked while that is no time-out.
    void trtout_Change();

    /// The time-out box was left or Enter pressed in it: it shows the time-out that counts, in
    /// microseconds. A new one marks the set-up as changed while running, so that it reaches the
    /// instrument. A text that is no time-out stays marked, and the one in use stays.
    void trtout_Commit();

    /// The box "Additional Delay" has another text: it is marked while that is no delay.
    void delaytrttdis_Change();

    /// The box "Additional Delay" was left: it shows the delay in picoseconds, and the mark
    /// follows.
    void delaytrttdis_Leave();

    /// Takes the level from `trigwheel`, for the selected source.
    void settrigfromwheel();

    /// Places the marker of the trigger's time above the plot.
    void trigposupdate();

    /// Shows the level of the selected source in millivolts.
    void show_level();

    /// Uploads level, source and edge, hysteresis and time-out of the trigger; a failure is
    /// shown in a message.
    void settriger();

private:
    /// What is typed in picoseconds, or the delay taken last while that is none.
    [[nodiscard]] std::int32_t additional_delay() const;

    Surroundings around_;
    std::int32_t taken_timeout_; ///< the time-out that its box gave last, microseconds
    std::int32_t taken_additional_ =
        0; ///< the additional delay that its box gave last, picoseconds
};

} // namespace kv408
