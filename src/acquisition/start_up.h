#pragma once

#include <string>
#include <utility>
#include <vector>

#include "config/settings_file.h"
#include "display/colour_update.h"
#include "display/cursors.h"
#include "host/message_boxes.h"
#include "link/device_link.h"
#include "panel/adjust.h"
#include "panel/front_panel.h"
#include "panel/screen.h"
#include "panel/time_base.h"
#include "panel/trigger.h"
#include "panel/vertical.h"
#include "state/acquisition_state.h"
#include "state/calibration_record.h"
#include "state/program_state.h"
#include "state/samples.h"

namespace kv408 {

/// Brings the program up and down: finds and checks the instrument, initialises the panel and
/// restores its settings; at the end it closes the device and saves them.
class StartUp {
public:
    /// The handlers that start-up runs.
    struct Handlers {
        TimeBase& time_base;
        Vertical& vertical;
        Trigger& trigger;
        Adjust& adjust;
        Cursors& cursors;
        ColourUpdate& colour_update;
        SettingsFile& settings;
        std::vector<std::string> measurements; ///< the entries of their selection lists
    };

    StartUp(FrontPanel& panel, AcquisitionState& acquisition, ProgramState& program,
            Samples& samples, CalibrationRecord& calibration, Handlers handlers, DeviceLink& link,
            MessageBoxes& boxes, Screen& screen)
        : panel_(panel), acquisition_(acquisition), program_(program), samples_(samples),
          calibration_(calibration), handlers_(std::move(handlers)), link_(link), boxes_(boxes),
          screen_(screen) {}

    /// Loading: discovery and check until the instrument answers, then the panel with the settings
    /// of the default file. Ends the program when the user gives up or no instrument can be had.
    void Form_Load();

    /// Discovery, once an activation.
    void Form_Activate();

    /// Runs the panel's handlers in their order, so that settings that were read take effect.
    void apply_settings();

    /// Exit and closing the window: closes the device, saves the settings and ends the program.
    /// What cannot be saved is told in a box when `tell` is set.
    [[noreturn]] void Form_Unload(bool tell = true);
    [[noreturn]] void MenuExit_Click() { Form_Unload(); }

private:
    /// True when the instrument answers the check; false when loading is complete already.
    bool connect();
    void inicijalizacija();
    void initialise_panel();

    FrontPanel& panel_;
    AcquisitionState& acquisition_;
    ProgramState& program_;
    Samples& samples_;
    CalibrationRecord& calibration_;
    Handlers handlers_;
    DeviceLink& link_;
    MessageBoxes& boxes_;
    Screen& screen_;
};

} // namespace kv408
