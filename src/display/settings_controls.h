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

    TabStrip tabstrip1{"TabStrip1"}; ///< which page is shown
    Button cmdok{"cmdOK"};           ///< OK
    Button cmdcancel{"cmdCancel"};   ///< Cancel

    // The pages; each is shown while the tab with its caption is selected.
    Label frmsnapshot{"frmSnapshot"};
    Label frmdisplay{"frmDisplay"};
    Label frmcolors{"frmColors"};

    // Snapshot.
    TextBox txtsnapshotpath{"txtSnapshotpath"}; ///< folder for silent saving, UTF-8
    Label shownpath{"shownPath"}; ///< that folder, where the box alone would not show its name
    Button browse{"Command1"};    ///< asks for that folder
    CheckBox chksnapshotdialog{"chkSnapshotDialog"}; ///< always ask for the file name
    CheckBox chksnapshotinvert{"chkSnapshotInvert"}; ///< invert the picture before saving

    // Display.
    Slider persist{"persist", 1, 9, 3}; ///< persistence depth, generations

    // Colors.
    std::array<OptionButton, colour_items> optcolor{
        OptionButton("optColor(0)"), OptionButton("optColor(1)"), OptionButton("optColor(2)"),
        OptionButton("optColor(3)"), OptionButton("optColor(4)"), OptionButton("optColor(5)"),
        OptionButton("optColor(6)")}; ///< which colour is edited
    std::array<Label, colour_items> shpcolor{
        Label("shpColor(0)"), Label("shpColor(1)"), Label("shpColor(2)"), Label("shpColor(3)"),
        Label("shpColor(4)"), Label("shpColor(5)"), Label("shpColor(6)")}; ///< its swatch
    std::array<Slider, colour_components> slrgb{
        Slider("slRGB(0)", 0, 255, 0), Slider("slRGB(1)", 0, 255, 0),
        Slider("slRGB(2)", 0, 255, 0)}; ///< red, green, blue of the edited colour
    std::array<TextBox, colour_components> txtrgb{TextBox("txtRGB(0)"), TextBox("txtRGB(1)"),
                                                  TextBox("txtRGB(2)")}; ///< the same as texts
    std::array<Label, colour_components> component{Label("shpRed"), Label("shpGreen"),
                                                   Label("shpBlue")}; ///< the same as swatches
    Label shpcurrentcol{"shpCurrentCol"};                             ///< the edited colour
    CheckBox chkautoupd{"chkAutoUpd"};     ///< apply edits to the main window at once
    Button cmdsetdefault{"cmdSetDefault"}; ///< factory colours
    Button cmdonblack{"cmdOnBlack"};       ///< bright colours on black
    Button cmdonwhite{"cmdOnWhite"};       ///< dark colours on white
};

} // namespace kv408
