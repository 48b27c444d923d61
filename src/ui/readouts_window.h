#pragma once

#include <QDialog>

#include "export/readouts_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The window of read-outs on the screen, modeless over its owner.
class ReadoutsWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    ReadoutsWindow(ReadoutsDialog& dialog, ScopeDriver& driver, QWidget* owner);

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_values();
    [[nodiscard]] QWidget* make_clipping();

    ReadoutsDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
