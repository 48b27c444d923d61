#include "ui/to_come.h"

namespace kv408::ui {

void disable_what_is_to_come(FrontPanel& panel) {
    // Set-up files, options.
    panel.loadconfig.set_enabled(false);
    panel.saveconfig.set_enabled(false);
    panel.mnusettings.set_enabled(false);

    panel.snapshot.set_enabled(false);
}

} // namespace kv408::ui
