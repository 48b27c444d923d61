#pragma once

#include "panel/surroundings.h"

namespace kv408 {

/// The check boxes of the Display frame.
class DisplayControls {
public:
    /// Connects the check boxes.
    explicit DisplayControls(const Surroundings& around);

    /// "Grid On" was clicked.
    void gridenable_Click();

    /// "Draw Dot" or "Persistence" was clicked: shown at once, also while stopped.
    void redraw();

    /// "Filter Avg." was clicked: the label on the screen follows, and the next set-up tells the
    /// instrument.
    void average_Click();

private:
    Surroundings around_;
};

} // namespace kv408
