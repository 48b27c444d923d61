#pragma once

#include "panel/front_panel.h"
#include "panel/screen.h"
#include "state/colour.h"

namespace kv408 {

/// Brings the panel and the screen in line with the colour table.
class ColourUpdate {
public:
    /// Recolours `panel` and `screen` from `colours`; all of them outlive it.
    ColourUpdate(FrontPanel& panel, const ColourTable& colours, Screen& screen)
        : panel_(panel), colours_(colours), screen_(screen) {}

    /// Takes over a changed colour table or persistence depth: both channels are mapped anew, the
    /// controls recoloured, the persistence ramps computed, the traces cleared and the graticule
    /// drawn. The next draw shows it.
    void colorupdate();

    /// Only gives the controls their colours.
    void recolour_panel();

private:
    void recolour_channel(Channel channel);
    void recolour_measurements();
    void recolour_general_texts();

    FrontPanel& panel_;
    const ColourTable& colours_;
    Screen& screen_;
};

} // namespace kv408
