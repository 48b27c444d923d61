#pragma once

#include <string>

#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/shared_texts.h"

namespace kv408 {

/// Whether no trace is drawn: the instrument sees no trigger. A set-up that is sent then brings no
/// trace back; the data that come with it, or Stop, do.
[[nodiscard]] inline bool traces_withheld(const FrontPanel& panel,
                                          const AcquisitionState& acquisition) {
    const std::string& status = panel.textstatus.text();
    return status == waiting_for_trigger_text || (status == setup_text && acquisition.untriggered);
}

} // namespace kv408
