#pragma once

#include "acquisition/state_machine.h"
#include "calibration/calibration_form.h"
#include "calibration/calibration_note.h"
#include "calibration/guided_calibration.h"
#include "calibration/linearity_run.h"
#include "calibration/record_backup.h"
#include "calibration/record_editor.h"
#include "calibration/software_offset.h"
#include "host/clock.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/message_boxes.h"
#include "host/places.h"
#include "host/window_messages.h"
#include "link/device_link.h"
#include "panel/front_panel.h"
#include "state/acquisition_state.h"
#include "state/calibration_record.h"
#include "state/channel_state.h"
#include "state/measurement_state.h"
#include "state/samples.h"
#include "state/time_base_state.h"

namespace kv408 {

/// Everything that calibrates: the form with its controls connected to what they do, the entries
/// of the menu, and the step of the state machine.
class Calibration {
public:
    /// What calibrating looks at and sets.
    struct Quantities {
        CalibrationRecord& in_use;
        AcquisitionState& acquisition;
        const TimeBaseState& time_base;
        const MeasurementState& measurements;
        const Samples& samples;
        Channels& channels;
    };

    /// What it needs of the machine.
    struct Host {
        Clock& clock;
        MessageBoxes& boxes;
        WindowMessages& messages;
        Files& files;
        FileChoosers& choosers;
        const Places& places;
    };

    /// Connects the form, the panel's menu entries and the step of `state_machine`.
    Calibration(FrontPanel& panel, const Quantities& quantities, DeviceLink& link,
                StateMachine& state_machine, const Host& host);

    /// The form's controls.
    [[nodiscard]] CalibrationForm& form() { return form_; }

    /// The record on the form.
    [[nodiscard]] const RecordEditor& record() const { return record_; }

    /// The linearity calibration.
    [[nodiscard]] const LinearityRun& linearity() const { return linearity_; }

private:
    void connect(FrontPanel& panel);

    CalibrationForm form_;
    CalibrationNote note_{form_.calnote};
    RecordBackup backup_;
    RecordEditor record_;
    GuidedCalibration guided_;
    LinearityRun linearity_;
    SoftwareOffset software_offset_;
};

} // namespace kv408
