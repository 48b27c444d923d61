#include "panel/display_controls.h"

#include "panel/set_up_change.h"

namespace kv408 {

DisplayControls::DisplayControls(const Surroundings& around) : around_(around) {
    around.panel.gridenable.on_click([this] { gridenable_Click(); });
    around.panel.eyeon.on_click([this] { redraw(); });
    around.panel.persist.on_click([this] { redraw(); });
    around.panel.average.on_click([this] { average_Click(); });
}

void DisplayControls::gridenable_Click() {
    around_.screen.makegrid();
    around_.screen.draw(draw_flags::all);
}

void DisplayControls::redraw() {
    around_.screen.draw(draw_flags::all);
}

void DisplayControls::average_Click() {
    around_.panel.avglabel.set_visible(around_.panel.average.checked());
    mark_changed(around_);
}

} // namespace kv408
