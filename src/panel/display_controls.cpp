#include "panel/display_controls.h"

#include "panel/set_up_change.h"

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
    mark_changed(acquisition_, link_);
}

} // namespace kv408
