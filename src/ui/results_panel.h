#pragma once

#include <QWidget>

#include "panel/front_panel.h"

namespace kv408::ui {

/// Rows of the results: one for each slot.
inline constexpr int results_rows = 3;

/// Makes the results of the measurements: a row for each slot with its name and the results of CH1
/// and CH2 in their colours.
[[nodiscard]] QWidget* make_results_panel(FrontPanel& panel, QWidget* parent);

} // namespace kv408::ui
