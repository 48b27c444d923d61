#pragma once

#include "config/settings_file.h"
#include "display/colour_update.h"
#include "display/cursors.h"
#include "panel/panel_parts.h"
#include "state/calibration_record.h"
#include "state/program_state.h"
#include "state/samples.h"

namespace kv408 {

/// Brings the program up and down: finds and checks the instrument, initialises the panel and
/// restores its settings; at the end it closes the device and saves them.
class StartUp {
public:
    /// What start-up runs and fills, besides what it shares with others.
    struct Parts {
        ProgramState& program;
        Samples& samples;
        CalibrationRecord& calibration;
        Cursors& cursors;
        ColourUpdate& colour_update;
        SettingsFile& settings;
    };

    /// Connects Exit.
    StartUp(PanelParts& on_panel, const Parts& parts);

    /// Loading: discovery and check until the instrument answers, then the panel with the settings
    /// of the default file. Ends the program when the user gives up or no instrument can be had.
    void Form_Load();

    /// Discovery, once per activation.
    void Form_Activate();

    /// Runs the panel's handlers in their order, so that settings that were read take effect.
    void apply_settings();

    /// Exit and closing the window: closes the device, saves the settings and ends the program.
    /// What cannot be saved is shown in a message box when `tell` is set.
    [[noreturn]] void Form_Unload(bool tell = true);

private:
    /// True when the instrument answers the check; false when loading is complete already.
    bool connect();
    void inicijalizacija();
    void initialise_panel();

    PanelParts& on_panel_;
    Surroundings around_;
    Parts parts_;
};

} // namespace kv408
