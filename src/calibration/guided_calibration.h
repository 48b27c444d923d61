#pragma once

#include <cstddef>
#include <cstdint>

#include "acquisition/state_machine.h"
#include "calibration/calibration_form.h"
#include "calibration/guide.h"
#include "calibration/record_editor.h"
#include "host/message_boxes.h"
#include "panel/front_panel.h"
#include "state/measurement_state.h"
#include "state/time_base_state.h"

namespace kv408 {

/// The calibrations that a person is led through: what their set-up buttons and their compute
/// buttons do.
class GuidedCalibration {
public:
    /// What the procedures look at and set.
    struct Surroundings {
        FrontPanel& panel;
        const TimeBaseState& time_base;
        const MeasurementState& measurements;
        StateMachine& state_machine;
        MessageBoxes& boxes;
    };

    GuidedCalibration(CalibrationForm& form, const Surroundings& surroundings, RecordEditor& record)
        : form_(form), around_(surroundings), record_(record) {}

    /// A set-up button: says what to connect, sets the panel and starts the sweep.
    void set_up(const Guide& guide);

    /// A compute button but that of the linearity: computes the edited values from what is measured
    /// now. Refused, with a message, when the panel or the measurement is not right.
    void compute(const Guide& guide);

private:
    void set_panel(const Guide& guide);
    void compute_gain(const Guide& guide);
    void compute_offsets(const Guide& guide);
    void compute_time_scale(const Guide& guide);
    [[nodiscard]] bool ranges_are(const Guide& guide) const;
    void refuse(const Guide& guide, const std::string& text, const std::string& help = {});
    void succeed(const Guide& guide, const std::string& measured);
    [[nodiscard]] double measured(std::size_t channel, std::size_t field) const;

    CalibrationForm& form_;
    Surroundings around_;
    RecordEditor& record_;
};

} // namespace kv408
