#include "ui/to_come.h"

namespace kv408::ui {

void disable_what_is_to_come(FrontPanel& panel) {
    // Calibration.
    panel.mnucalibration.set_enabled(false);
    panel.cmdcaloofset.set_enabled(false);
}

} // namespace kv408::ui
