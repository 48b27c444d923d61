#pragma once

#include <QDialog>

#include "export/record_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The recording dialog on the screen, modeless over its owner.
class RecordWindow : public QDialog {
public:
    /// Shows the controls of `dialog`; both outlive the window.
    RecordWindow(RecordDialog& dialog, ScopeDriver& driver, QWidget* owner);

    /// Closes it, by its frame or with Escape as well, unless a recording is to go on.
    void reject() override;

private:
    RecordDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
