#pragma once

#include <QDialog>

#include "display/settings_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The settings dialog on the screen, modeless over its owner. Closing it by its frame or with
/// Escape cancels.
class SettingsWindow : public QDialog {
public:
    /// Shows the controls of `dialog`, which has been loaded; both outlive the window.
    SettingsWindow(SettingsDialog& dialog, ScopeDriver& driver, QWidget* owner);

    /// Shows it in front, at first over the right end of its owner, where it leaves the traces in
    /// sight.
    void present();

    void reject() override;

private:
    SettingsDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
