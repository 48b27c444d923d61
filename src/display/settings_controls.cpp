#include "display/settings_controls.h"

#include <string>

namespace kv408 {

SettingsControls::SettingsControls() {
    frmsnapshot.set_caption("Snapshot");
    frmdisplay.set_caption("Display");
    frmcolors.set_caption("Colors");
    for (const Label* const frame : {&frmsnapshot, &frmdisplay, &frmcolors}) {
        tabstrip1.add({frame->caption(), frame->caption()});
    }
    cmdok.set_caption("OK");
    cmdcancel.set_caption("Cancel");
    cmdsetdefault.set_caption("Set all colors to default");
    cmdonblack.set_caption("On black");
    cmdonwhite.set_caption("On white");
    for (std::size_t item = 0; item < colour_items; ++item) {
        optcolor[item].set_caption(std::string(colour_captions[item]));
    }
}

} // namespace kv408
