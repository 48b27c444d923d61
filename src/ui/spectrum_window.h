#pragma once

#include <QDialog>

#include "export/spectrum_dialog.h"
#include "ui/scope_driver.h"
#include "ui/spectrum_plot.h"

namespace kv408::ui {

/// The spectrum window on the screen, modeless over its owner.
class SpectrumWindow : public QDialog {
public:
    /// Shows `dialog`; both outlive the window.
    SpectrumWindow(SpectrumDialog& dialog, ScopeDriver& driver, QWidget* owner);
    ~SpectrumWindow() override;
    SpectrumWindow(const SpectrumWindow&) = delete;
    SpectrumWindow& operator=(const SpectrumWindow&) = delete;

    /// Closes it, by its frame or with Escape as well.
    void reject() override;

private:
    [[nodiscard]] QWidget* make_choice();
    [[nodiscard]] QWidget* make_spectrum();
    [[nodiscard]] QWidget* make_values();

    SpectrumDialog& dialog_;
    ScopeDriver& driver_;
    SpectrumPlot* plot_;
};

} // namespace kv408::ui
