#pragma once

#include <functional>

#include "display/colour_items.h"
#include "display/colour_update.h"
#include "display/settings_controls.h"
#include "host/file_choosers.h"
#include "panel/front_panel.h"
#include "panel/screen.h"
#include "state/colour.h"
#include "state/display_settings.h"

namespace kv408 {

/// The settings dialog `frmSettings`: snapshot, display and colours. It is modeless: the main
/// window goes on sweeping while it is open, and shows edited colours at once where the user wants
/// it.
class SettingsDialog {
public:
    /// Connects its entry of the menu of `panel`, and edits `settings` and `colours`; `update` and
    /// `screen` show them, `choosers` asks for folders.
    SettingsDialog(FrontPanel& panel, DisplaySettings& settings, ColourTable& colours,
                   ColourUpdate& update, Screen& screen, FileChoosers& choosers);
    SettingsDialog(const SettingsDialog&) = delete;
    SettingsDialog& operator=(const SettingsDialog&) = delete;

    /// The dialog's controls.
    [[nodiscard]] SettingsControls& controls() { return controls_; }

    /// True from its opening until OK or Cancel.
    [[nodiscard]] bool is_open() const { return open_; }

    /// The main window's menu entry: opens the dialog; one that is open already is only brought to
    /// the front.
    void mnusettings_Click();

    /// Does what Cancel does, if the dialog is open: the colours from before come back.
    void cancel();

    /// The colours as they would be after `cancel`.
    [[nodiscard]] ColourTable confirmed_colours() const {
        return open_ ? table_of(saved_) : colours_;
    }

    /// Puts the factory colours into the edited ones and applies them.
    void setColDefault();

    /// Makes `colours` those of the program, as confirmed in the dialog; one that is open goes on
    /// from them.
    void set_colours(const ColourTable& colours);

    /// Makes `generations`, 0..9, the depth of the persistence in the same way.
    void set_persistence_depth(int generations);

    /// Set the listeners of the window: the dialog is to be shown in front, and is to be closed.
    void on_show(std::function<void()> listener) { show_ = std::move(listener); }
    void on_close(std::function<void()> listener) { closed_ = std::move(listener); }

private:
    void connect();
    void connect_colours();
    void Form_Load();
    void TabStrip1_Click();
    void optColor_Click(std::size_t item);
    void slRGB_Change(std::size_t component);
    void txtRGB_Change(std::size_t component);
    void chkAutoUpd_Click();
    void cmdSetDefault_Click();
    void chkSnapshotDialog_Click();
    /// The folder's name was changed.
    void show_path();
    void Command1_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    /// Puts `colours` into the edited ones and applies them.
    void take(const ColourTable& colours);
    /// Repaints the swatches and reloads the editor for the selected item.
    void show_working();
    /// Makes `items` the colours of the program and redraws the main window.
    void apply(const ItemColours& items);
    void show_swatches();
    /// Shows `colour` as the edited one, with its components.
    void show_edited(Colour colour);
    void show_number(std::size_t component);
    void close();

    DisplaySettings& settings_;
    ColourTable& colours_;
    ColourUpdate& update_;
    Screen& screen_;
    FileChoosers& choosers_;
    SettingsControls controls_;
    ItemColours saved_ = {};   ///< in force when the dialog was opened
    ItemColours working_ = {}; ///< as edited
    std::size_t item_ = 0;     ///< the edited colour
    bool open_ = false;
    bool loading_ = false; ///< the controls are being set to what is there: nothing is edited
    bool echoing_ = false; ///< a text is being set to its slider's value
    bool typing_ = false;  ///< a slider is being set to a text that is to stay
    std::function<void()> show_;
    std::function<void()> closed_;
};

} // namespace kv408
