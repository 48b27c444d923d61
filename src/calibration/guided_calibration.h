#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "acquisition/state_machine.h"
#include "calibration/calibration_form.h"
#include "calibration/calibration_note.h"
#include "calibration/guide.h"
#include "calibration/record_editor.h"
#include "panel/surroundings.h"
#include "state/measurement_state.h"

namespace kv408 {

/// The calibrations that a person is led through: what their set-up buttons and their compute
/// buttons do.
class GuidedCalibration {
public:
    GuidedCalibration(const Surroundings& around, CalibrationForm& form, CalibrationNote& note,
                      StateMachine& state_machine, const MeasurementState& measurements,
                      RecordEditor& record)
        : around_(around), form_(form), note_(note), state_machine_(state_machine),
          measurements_(measurements), record_(record) {}

    /// A set-up button: says what to connect, sets the panel and starts the sweep.
    void set_up(const Guide& guide);

    /// A compute button but that of the linearity: computes the edited values from what is measured
    /// now. Refused, with a message, when the panel or the measurement is not right, or when no
    /// triggered sweep has come since the panel or the record in use was changed.
    void compute(const Guide& guide);

private:
    void set_panel(const Guide& guide);
    [[nodiscard]] bool panel_is_right(const Guide& guide) const;
    [[nodiscard]] bool fits_gain(const Guide& guide) const;
    [[nodiscard]] bool fits_offsets(const Guide& guide) const;
    [[nodiscard]] std::string sweep_missing(const Guide& guide) const;
    void compute_gain(const Guide& guide);
    void compute_offsets(const Guide& guide);
    void compute_time_scale(const Guide& guide);
    void refuse(const Guide& guide, const std::string& text, const std::string& help = {});
    void succeed(const Guide& guide, const std::string& measured);
    /// The instrument works with the values that those of `guide` are computed from.
    [[nodiscard]] bool works_with_base_of(const Guide& guide) const;
    [[nodiscard]] double measured(Channel channel, std::size_t field) const;

    Surroundings around_;
    CalibrationForm& form_;
    CalibrationNote& note_;
    StateMachine& state_machine_;
    const MeasurementState& measurements_;
    RecordEditor& record_;
};

} // namespace kv408
