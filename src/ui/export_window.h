#pragma once

#include <QAction>
#include <QDialog>

#include "export/export_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The export dialog on the screen, modeless over its owner.
class ExportWindow : public QDialog {
public:
    /// Shows the controls of `dialog`; both outlive the window. `copy_table` copies the sweep as a
    /// table, and has its keys here too.
    ExportWindow(ExportDialog& dialog, ScopeDriver& driver, QAction& copy_table, QWidget* owner);

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    ExportDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
