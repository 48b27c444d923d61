#include "panel/display_controls.h"

namespace kv408 {

void DisplayControls::gridenable_Click() {
    screen_.makegrid();
    screen_.draw(draw_flags::all);
}

void DisplayControls::redraw() {
    screen_.draw(draw_flags::all);
}

void DisplayControls::average_Click() {
    panel_.avglabel.set_visible(panel_.average.checked());
    if (acquisition_.acqrunning) {
        acquisition_.scopestate = "changes";
    }
}

} // namespace kv408
