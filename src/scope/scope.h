#pragma once

#include <functional>
#include <iostream>
#include <memory>

#include "display/picture_coder.h"
#include "host/browse.h"
#include "host/clock.h"
#include "host/diagnose.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "host/places.h"
#include "host/window_messages.h"
#include "link/bridge.h"

namespace kv408 {

class Autoset;
class Help;
class Picture;
class PlotMouse;
struct CalibrationForm;
class Label;
class LastSettings;
class SettingsDialog;
class SettingsFile;
class SingleSweep;
class Snapshot;
class Sweeps;
class Tools;
class Undo;
struct FrontPanel;
struct Parts;

/// What the program needs of the machine it runs on and of the instrument's bridge.
struct Machine {
    Clock& clock;
    MessageBoxes& boxes;
    WindowMessages& messages;
    Bridge& bridge;
    Files& files;
    FileChoosers& choosers;
    Places places;
    PictureCoder& coder;
    std::ostream& log = std::cerr;   ///< receives messages that need no answer, or can get none
    Diagnose diagnose = {};          ///< finds out what keeps the instrument from being reached
    Browse browse = {};              ///< opens the manual
    std::function<void()> beep = {}; ///< sounds the computer's bell; empty: silent
};

/// The whole program without its window: owns every part, wires them together, and is the one
/// entry through which the window and the timer reach it.
class Scope {
public:
    /// Builds and wires the parts; nothing is sent or shown yet.
    explicit Scope(const Machine& machine);
    ~Scope();

    /// Start-up: finds and checks the instrument, initialises the panel. False when the program
    /// ended on the way.
    bool start();

    /// One tick of the 100 ms timer.
    void tick();

    /// Runs one user action on the panel's controls, for example
    /// `scope.act([&] { scope.panel().gridenable.set_checked(true); })`. Everything that the window
    /// does to a control goes through here, so that the end of the program unwinds to this point
    /// and a timer tick that falls into a message box knows that an exchange is under way.
    void act(const std::function<void()>& action);

    /// Shut-down, as Exit and closing the window do: closes the device, saves the settings and ends
    /// the program.
    void close();

    /// Does what `close` does, but opens no box: for an end that nobody waits to confirm.
    void end();

    /// Does what `end` does without touching anything that is shown: for when the display or all
    /// else is lost. Afterwards nothing is sent or drawn. Never throws.
    void abandon() noexcept;

    /// The settings as last known, which any thread may save at any time.
    [[nodiscard]] LastSettings& last_settings();

    /// True while an entry has not returned.
    [[nodiscard]] bool busy() const;

    /// True once the program has ended; the window then closes.
    [[nodiscard]] bool ended() const;

    /// The controls.
    [[nodiscard]] FrontPanel& panel();

    /// The picture on the plot.
    [[nodiscard]] Picture& picture();

    /// Dragging on and around the plot.
    [[nodiscard]] PlotMouse& plot_mouse();

    /// The settings dialog.
    [[nodiscard]] SettingsDialog& settings_dialog();

    /// The settings file.
    [[nodiscard]] SettingsFile& settings_file();

    /// The pictures of the plot for files.
    [[nodiscard]] Snapshot& snapshot();

    /// The finished sweeps.
    [[nodiscard]] Sweeps& sweeps();

    /// Autoset.
    [[nodiscard]] Autoset& autoset();

    /// Single sweeps.
    [[nodiscard]] SingleSweep& single();

    /// The controls of the calibration form.
    [[nodiscard]] CalibrationForm& calibration_form();

    /// Undo and Redo.
    [[nodiscard]] Undo& undo();

    /// What the menu "Tools" opens.
    [[nodiscard]] Tools& tools();

    /// The menu "Help".
    [[nodiscard]] Help& help();

    /// How far a set-up has been loaded that takes longer than a second; its caption is empty
    /// otherwise.
    [[nodiscard]] Label& loading();

    /// All parts, to look at; they are declared in scope/parts.h.
    [[nodiscard]] const Parts& parts() const { return *parts_; }

private:
    void enter(const std::function<void()>& entry);
    void autoset_tick_over();

    std::unique_ptr<Parts> parts_;
};

} // namespace kv408
