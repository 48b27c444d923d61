#pragma once

#include <QDialog>

#include "export/jitter_dialog.h"
#include "ui/bathtub_plot.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// The jitter window on the screen, modeless over its owner.
class JitterWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    JitterWindow(JitterDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~JitterWindow() override;
    JitterWindow(const JitterWindow&) = delete;
    JitterWindow& operator=(const JitterWindow&) = delete;

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_edge();
    [[nodiscard]] QWidget* make_bathtub();

    JitterDialog& dialog_;
    ScopeDriver& driver_;
    BathtubPlot* plot_;
};

} // namespace kv408::ui
