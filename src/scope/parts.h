#pragma once

#include "acquisition/block_sweep.h"
#include "acquisition/point_pass.h"
#include "acquisition/set_up_upload.h"
#include "acquisition/state_machine.h"
#include "calibration/calibration.h"
#include "config/settings_file.h"
#include "display/colour_update.h"
#include "display/cursors.h"
#include "display/picture.h"
#include "display/plot_mouse.h"
#include "display/settings_dialog.h"
#include "display/snapshot.h"
#include "host/ending.h"
#include "link/device_link.h"
#include "measure/measurements.h"
#include "panel/adjust.h"
#include "panel/display_controls.h"
#include "panel/front_panel.h"
#include "panel/surroundings.h"
#include "panel/time_base.h"
#include "panel/trigger.h"
#include "panel/vertical.h"
#include "scope/help.h"
#include "scope/scope.h"
#include "scope/start_up.h"
#include "scope/sweep_dialogs.h"
#include "scope/tools.h"
#include "state/calibration_record.h"
#include "state/display_settings.h"
#include "state/measurement_state.h"
#include "state/sweeps.h"

namespace kv408 {

/// Every part of the program, in the order in which they are built.
struct Parts {
    /// Builds all parts over `machine` and connects the controls to their handlers.
    explicit Parts(const Machine& machine);

    // Shared state.
    ProgramState program;
    AcquisitionState acquisition;
    TimeBaseState time_base_state;
    TriggerState trigger_state;
    CursorState cursor_state;
    Channels channels;
    Samples samples; ///< the sweep in the making
    Sweeps sweeps;   ///< the finished ones
    ColourTable colours;
    MeasurementState measurements;
    AnnotationMarks marks;
    DisplaySettings settings;
    CalibrationRecord calibration = default_calibration;
    FrontPanel panel;
    Entries entries;

    // What the program needs of its machine.
    Clock& clock;
    EndingMessageBoxes ending_boxes;
    SweepMessageBoxes boxes;
    EndingWindowMessages messages;
    Files& files;
    EndingFileChoosers ending_choosers;
    SweepFileChoosers choosers;
    Places places;

    // The subsystems.
    DeviceLink link;
    Picture picture;
    ColourUpdate colour_update;
    SettingsDialog settings_dialog;
    Snapshot snapshot;
    Measurements measuring;
    Surroundings around;
    Vertical vertical;
    Trigger trigger;
    Adjust adjust;
    TimeBase time_base;
    Cursors cursors;
    PlotMouse plot_mouse;
    DisplayControls display_controls;
    SetUpUpload upload;
    BlockSweep block;
    PointPass pass;
    StateMachine state_machine;
    SettingsFile settings_file;
    StartUp start_up;
    Calibration frmcalibration;
    Tools tools;
    Help help;

    /// Those among the entries that are what the user does.
    int acts = 0;

private:
    void note_before_bridge();
};

} // namespace kv408
