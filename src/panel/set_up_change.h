#pragma once

#include "link/device_link.h"
#include "state/acquisition_state.h"

namespace kv408 {

/// Marks the set-up as changed while a sweep is running, so that the next ticks upload it again,
/// and waits until the reply in progress has stopped arriving. Does nothing while stopped.
inline void mark_changed(AcquisitionState& acquisition, DeviceLink& link) {
    if (acquisition.acqrunning) {
        acquisition.scopestate = state_word::changes;
        link.waitrxidle();
    }
}

} // namespace kv408
