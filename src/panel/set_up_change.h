#pragma once

#include "panel/surroundings.h"

namespace kv408 {

/// Marks the set-up as changed while a sweep is running, so that the next ticks upload it again.
/// Does nothing, and is false, while stopped.
inline bool ask_for_set_up(const Surroundings& around) {
    if (around.acquisition.acqrunning) {
        around.acquisition.scopestate = state_word::changes;
    }
    return around.acquisition.acqrunning;
}

/// The same, and waits until the reply in progress has stopped arriving.
inline void mark_changed(const Surroundings& around) {
    if (ask_for_set_up(around)) {
        around.link.waitrxidle();
    }
}

/// Brings marks and picture into line with a control that was changed. Only while stopped:
/// otherwise data that are taken with the change do so.
inline void show_change(const Surroundings& around) {
    if (around.acquisition.scopestate == state_word::stopped) {
        around.measuring.showmeasurements();
        around.screen.draw(draw_flags::all);
    }
}

} // namespace kv408
