#pragma once

#include "link/device_link.h"
#include "panel/front_panel.h"
#include "panel/screen.h"
#include "state/acquisition_state.h"

namespace kv408 {

/// The check boxes of the Display frame.
class DisplayControls {
public:
    DisplayControls(FrontPanel& panel, AcquisitionState& acquisition, DeviceLink& link,
                    Screen& screen)
        : panel_(panel), acquisition_(acquisition), link_(link), screen_(screen) {}

    /// "Grid On" was clicked.
    void gridenable_Click();

    /// "Draw Dot" or "Persistence" was clicked: shown at once, also while stopped.
    void redraw();

    /// "Filter Avg." was clicked: the label on the screen follows, and the next set-up tells the
    /// instrument.
    void average_Click();

private:
    FrontPanel& panel_;
    AcquisitionState& acquisition_;
    DeviceLink& link_;
    Screen& screen_;
};

} // namespace kv408
