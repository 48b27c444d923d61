#pragma once

#include <QWidget>

#include "calibration/calibration_form.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The window of the calibration form: its steps in the order in which one calibrates, and what is
/// going on always in sight below them. It belongs to the main window and stays open beside it.
class CalibrationWindow : public QWidget {
public:
    /// A window over `parent` that shows `form` and enters the program through `driver`.
    CalibrationWindow(QWidget* parent, CalibrationForm& form, ScopeDriver& driver);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    CalibrationForm& form_;
    ScopeDriver& driver_;
};

/// Opens and closes the window of `form` over `parent` as the form says; it is made when it is
/// opened first.
void follow(CalibrationForm& form, QWidget& parent, ScopeDriver& driver);

} // namespace kv408::ui
