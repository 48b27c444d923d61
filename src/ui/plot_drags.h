#pragma once

#include "ui/plot_widget.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// Lets the left mouse button drag the channels' markers, the trigger marker, the cursor lines
/// and the rectangle of the histogram on `plot`; with Shift held both cursor lines move. The mouse
/// tells by its shape what it can drag and which way. The markers have been made and bound before.
void take_plot_drags(PlotWidget& plot, ScopeDriver& driver);

} // namespace kv408::ui
