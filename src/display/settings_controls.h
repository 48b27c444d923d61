#pragma once

#include <array>

#include "display/colour_items.h"
#include "panel/controls.h"

namespace kv408 {

/// Number of components of a colour: red, green, blue.
inline constexpr std::size_t colour_components = 3;

/// Every control of the settings dialog.
struct SettingsControls {
    /// The dialog before it is loaded: captions and tabs, no colours, no handlers.
    SettingsControls();

    /// All of them.
    ControlList all;

    TabStrip tabstrip1{all, {"TabStrip1"}}; ///< which page is shown
    Button cmdok{all, {"cmdOK"}};           ///< OK
    Button cmdcancel{all, {"cmdCancel"}};   ///< Cancel

    // The pages; each is shown while the tab with its caption is selected.
    Label frmsnapshot{all, "frmSnapshot"};
    Label frmdisplay{all, "frmDisplay"};
    Label frmcolors{all, "frmColors"};

    // Snapshot.
    TextBox txtsnapshotpath{all, {"txtSnapshotpath"}}; ///< folder for silent saving, UTF-8
    Label shownpath{all, "shownPath"}; ///< that folder, where the box alone would not show its name
    Button browse{all, {.name = "Command1", .outside = Outside::none}}; ///< asks for that folder
    CheckBox chksnapshotdialog{all, {"chkSnapshotDialog"}}; ///< always ask for the file name
    CheckBox chksnapshotinvert{all, {"chkSnapshotInvert"}}; ///< invert the picture before saving

    // Display.
    Slider persist{all, {"persist"}, 1, 9, 3}; ///< persistence depth, generations

    // Colors.
    std::array<OptionButton, colour_items> optcolor =
        numbered<OptionButton, colour_items>(all, "optColor"); ///< which colour is edited
    std::array<Label, colour_items> shpcolor =
        numbered<Label, colour_items>(all, "shpColor"); ///< its swatch
    std::array<Slider, colour_components> slrgb{
        Slider(all, {"slRGB(0)"}, 0, 255, 0), Slider(all, {"slRGB(1)"}, 0, 255, 0),
        Slider(all, {"slRGB(2)"}, 0, 255, 0)}; ///< red, green, blue of the edited colour
    std::array<TextBox, colour_components> txtrgb =
        numbered<TextBox, colour_components>(all, "txtRGB"); ///< the same as texts
    std::array<Label, colour_components> component{Label(all, "shpRed"), Label(all, "shpGreen"),
                                                   Label(all, "shpBlue")}; ///< the same as swatches
    Label shpcurrentcol{all, "shpCurrentCol"};                             ///< the edited colour
    CheckBox chkautoupd{all, {"chkAutoUpd"}};     ///< apply edits to the main window at once
    Button cmdsetdefault{all, {"cmdSetDefault"}}; ///< factory colours
    Button cmdonblack{all, {"cmdOnBlack"}};       ///< bright colours on black
    Button cmdonwhite{all, {"cmdOnWhite"}};       ///< dark colours on white
};

} // namespace kv408
