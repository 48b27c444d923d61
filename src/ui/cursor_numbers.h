#pragma once

#include <array>

#include <QLabel>

#include "state/cursor_state.h"
#include "ui/plot_widget.h"

namespace kv408::ui {

/// The numbers 1 and 2 at the lines of the measuring cursors. They lie in the margin around the
/// picture and are no part of it: right of voltage cursors, above time cursors.
class CursorNumbers {
public:
    /// Numbers on `plot` in the colours of `read_out`.
    CursorNumbers(PlotWidget* plot, QWidget& read_out);

    /// Puts them to the lines that `cursors` shows; without lines they are hidden.
    void show(const CursorState& cursors);

    /// Takes the size and place that the plot's scale gives them.
    void fit();

private:
    PlotWidget& plot_;
    std::array<QLabel*, 2> numbers_ = {};
    CursorState cursors_;
};

} // namespace kv408::ui
