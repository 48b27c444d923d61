#pragma once

#include "acquisition/state_machine.h"
#include "calibration/calibration_form.h"
#include "calibration/calibration_note.h"
#include "calibration/guided_calibration.h"
#include "calibration/linearity_run.h"
#include "calibration/record_backup.h"
#include "calibration/record_editor.h"
#include "calibration/software_offset.h"
#include "host/file_choosers.h"
#include "host/files.h"
#include "host/places.h"
#include "panel/surroundings.h"
#include "state/calibration_record.h"
#include "state/measurement_state.h"
#include "state/samples.h"

namespace kv408 {

/// Everything that calibrates: the form with its controls connected to what they do, the entries
/// of the menu, and the step of the state machine.
class Calibration {
public:
    /// What calibrating looks at and sets, and where records are kept, besides what it shares with
    /// others.
    struct Parts {
        CalibrationRecord& in_use;
        const MeasurementState& measurements;
        const Samples& samples;
        StateMachine& state_machine;
        Files& files;
        FileChoosers& choosers;
        const Places& places;
    };

    /// Connects the form, the panel's menu entries and the step of the state machine.
    Calibration(const Surroundings& around, const Parts& parts);

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
