#pragma once

#include <QDialog>

#include "export/eye_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The eye window on the screen, modeless over its owner.
class EyeWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    EyeWindow(EyeDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~EyeWindow() override;
    EyeWindow(const EyeWindow&) = delete;
    EyeWindow& operator=(const EyeWindow&) = delete;

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_interval();

    EyeDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
