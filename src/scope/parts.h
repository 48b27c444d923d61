#pragma once

#include "acquisition/acquisition_parts.h"
#include "autoset/autoset.h"
#include "calibration/calibration.h"
#include "config/settings_file.h"
#include "config/undo.h"
#include "display/colour_update.h"
#include "display/cursors.h"
#include "display/picture.h"
#include "display/plot_mouse.h"
#include "display/settings_dialog.h"
#include "display/snapshot.h"
#include "host/ending.h"
#include "link/device_link.h"
#include "measure/measurements.h"
#include "panel/panel_parts.h"
#include "scope/help.h"
#include "scope/scope.h"
#include "scope/single_sweep.h"
#include "scope/start_up.h"
#include "scope/sweep_dialogs.h"
#include "scope/tools.h"
#include "state/calibration_record.h"
#include "state/display_settings.h"
#include "state/measurement_state.h"

namespace kv408 {

/// Every part of the program, in the order in which they are built.
struct Parts : PanelState, SweepState {
    /// Builds all parts over `machine` and connects the controls to their handlers.
    explicit Parts(const Machine& machine);

    // Shared state, besides that of the panel and the sweeps.
    ProgramState program;
    ColourTable colours;
    MeasurementState measurements;
    AnnotationMarks marks;
    DisplaySettings settings;
    CalibrationRecord calibration = default_calibration;
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
    PanelParts on_panel;
    Cursors cursors;
    PlotMouse plot_mouse;
    AcquisitionParts acquiring;
    SettingsFile settings_file;
    Undo undo;
    StartUp start_up;
    Calibration frmcalibration;
    Tools tools;
    Help help;
    SingleSweep single;
    Autoset autoset;

    /// The set-up that is the user's: that of the panel, or while Autoset tries others the one
    /// before it.
    [[nodiscard]] PanelSetUp chosen_set_up() const {
        return autoset.under_way() ? before_autoset_ : set_up_of(panel, settings_file.bytes());
    }

    /// How many of the entries are actions of the user, 0..
    int acts = 0;

private:
    [[nodiscard]] Autoset::Works autoset_works();
    void autoset_over();
    void note_before_bridge();

    PanelSetUp before_autoset_;
};

} // namespace kv408
