#pragma once

#include <QDialog>

#include "export/density_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The density window on the screen, modeless over its owner.
class DensityWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    DensityWindow(DensityDialog& dialog, ScopeDriver& driver, QWidget* owner);

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_collecting();
    [[nodiscard]] QWidget* make_collected();
    [[nodiscard]] QLayout* make_ending();

    DensityDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
