#pragma once

#include "export/maths_dialog.h"
#include "export/reference_menu.h"
#include "ui/plot_widget.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// What stands beside the references on the plot: for each that is kept its name, volts and time
/// per division in its colour, in the upper right corner. A click shows it or hides it. Below them
/// stand the computed traces.
class ReferencePlates : public QWidget {
public:
    ReferencePlates(PlotWidget* plot, ReferenceMenu& references, MathsDialog& maths,
                    ScopeDriver& driver);

    /// Takes the place that the plot's scale gives it.
    void fit();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    PlotWidget& plot_;
};

} // namespace kv408::ui
