#pragma once

#include <QWidget>

#include "export/readouts_dialog.h"
#include "ui/plot_widget.h"

namespace kv408::ui {

/// What stands at the plot's upper or lower edge while traces leave the instrument's scale there.
/// It lies over the plot and is in no snapshot.
class ClippingMarks : public QWidget {
public:
    enum class Edge { upper, lower };

    /// Shows the marks of `edge`, among `controls`, on `plot`; both outlive it.
    ClippingMarks(PlotWidget* plot, ReadoutsControls& controls, Edge edge);

    /// Takes the place that the plot's scale gives it.
    void fit();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    PlotWidget& plot_;
    Edge edge_;
};

} // namespace kv408::ui
