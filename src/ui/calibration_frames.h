#pragma once

// The frames of the calibration window, each a step with its widgets made, described and bound.

#include <QWidget>

#include "calibration/calibration_form.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// Makes the frame of its name for the controls of `form`.
[[nodiscard]] QWidget* make_read_frame(CalibrationForm& form, ScopeDriver& driver);
[[nodiscard]] QWidget* make_gain_frame(CalibrationForm& form, ScopeDriver& driver);
[[nodiscard]] QWidget* make_offset_frame(CalibrationForm& form, ScopeDriver& driver);
[[nodiscard]] QWidget* make_scale_frame(CalibrationForm& form, ScopeDriver& driver);
[[nodiscard]] QWidget* make_delay_frame(CalibrationForm& form, ScopeDriver& driver);
[[nodiscard]] QWidget* make_write_frame(CalibrationForm& form, ScopeDriver& driver);
[[nodiscard]] QWidget* make_linearity_frame(CalibrationForm& form, ScopeDriver& driver);

/// Makes what is always in sight: the status, the line below it, the progress bar and Stop.
[[nodiscard]] QWidget* make_calibration_status(CalibrationForm& form, ScopeDriver& driver);

} // namespace kv408::ui
