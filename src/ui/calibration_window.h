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

/// Opens and closes the window of `form`, which belongs to the main window `parent`, as the form
/// says. It is made when it is opened first, and put beside `parent`, or where the screen has no
/// room for that beside the `plot`, which one watches while one calibrates.
void follow(CalibrationForm& form, QWidget& parent, const QWidget& plot, ScopeDriver& driver);

} // namespace kv408::ui
