#include "panel/front_panel.h"

#include "state/plot_geometry.h"

namespace kv408 {

FrontPanel::FrontPanel() {
    gridenable.set_checked(true);
    check1.set_checked(true);
    trtout.set_text("1000");
    delaytrttdis.set_text("0");
    avglabel.set_caption("Filter Avg.");
    avglabel.set_visible(false);
    nodata.set_visible(false);
    nodata.set_back_colour(rgb(255, 208, 128));
    nodata.set_fore_colour(rgb(0, 0, 0));
    trigertext.set_caption("T");
    slider1.set_range(0, plot::wheel_span);
    slider1.set_Value(512);
    ltp2.mark(0);
    centerfr.set_visible(false);
    lblc1.set_visible(false);
    lblc2.set_visible(false);
    for (std::size_t index = 0; index < channel.size(); ++index) {
        ChannelControls& controls = channel[index];
        controls.enable.set_checked(true);
        controls.psofset.set_text("0");
        controls.ofset.set_caption("0.00mV");
        controls.text.set_caption(std::to_string(index + 1));
        controls.label.set_caption("CH" + std::to_string(index + 1));
    }
    tabstrip2.add({"CH1", "CH1"});
    tabstrip2.add({"CH2", "CH2"});
    tabstrip2.add({"TRIG", "Trigger"});
    tabstrip3.add({"V", "Voltage"});
    tabstrip3.add({"T", "Time"});
    tabstrip3.add({"OFF", "Off"});
    tabstrip3.select(3);
}

} // namespace kv408
