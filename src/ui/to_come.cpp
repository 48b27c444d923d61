#include "ui/to_come.h"

namespace kv408::ui {

void disable_what_is_to_come(FrontPanel& panel) {
    // Set-up files, calibration, options.
    panel.loadconfig.set_enabled(false);
    panel.saveconfig.set_enabled(false);
    panel.mnucalibration.set_enabled(false);
    panel.cmdcaloofset.set_enabled(false);
    panel.mnusettings.set_enabled(false);

    panel.snapshot.set_enabled(false);

    // Measurements.
    panel.check1.set_enabled(false);
    for (MeasurementControls& slot : panel.measurement) {
        slot.selector.set_enabled(false);
        slot.annotate.set_enabled(false);
    }

    // Trigger.
    panel.trigsource.set_enabled(false);
    panel.trigeredge.set_enabled(false);
    panel.shyst.set_enabled(false);
    panel.trzero.set_enabled(false);
    panel.trlevelmv.set_enabled(false);
    panel.trtout.set_enabled(false);
    panel.trigertext.set_visible(false);
    panel.ltp2.set_visible(false);

    // Delays and the adjust wheel.
    for (ChannelControls& channel : panel.channel) {
        channel.psofset.set_enabled(false);
        channel.slenps.set_enabled(false);
    }
    panel.delaytrttdis.set_enabled(false);
    panel.tabstrip2.set_enabled(false);
    panel.slider1.set_enabled(false);

    // Cursors.
    panel.tabstrip3.set_enabled(false);
    panel.combocursorselect.set_enabled(false);
    panel.centerfr.set_visible(false);
    panel.lblc1.set_visible(false);
    panel.lblc2.set_visible(false);
}

} // namespace kv408::ui
