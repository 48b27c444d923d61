#pragma once

#include <QDialog>

#include "export/mask_dialog.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The mask window on the screen, modeless over its owner.
class MaskWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    MaskWindow(MaskDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~MaskWindow() override;
    MaskWindow(const MaskWindow&) = delete;
    MaskWindow& operator=(const MaskWindow&) = delete;

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_mask();
    [[nodiscard]] QWidget* make_verdict();

    MaskDialog& dialog_;
    ScopeDriver& driver_;
};

} // namespace kv408::ui
