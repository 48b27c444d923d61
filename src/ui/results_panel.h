#pragma once

#include <QFontMetrics>
#include <QWidget>

#include "panel/front_panel.h"

namespace kv408::ui {

/// Rows of the results: one for each slot.
inline constexpr int results_rows = 3;

/// Lengths of the results, in units of the window.
namespace results_measure {
inline constexpr int rule_gap = 10; ///< ahead of the second channel, the rule in its middle

/// What the star ahead of a name takes in `letters`.
[[nodiscard]] int mark_width(const QFontMetrics& letters);
} // namespace results_measure

/// Makes the results of the measurements: a row for each slot with its name and the results of CH1
/// and CH2 in their colours. Its layout holds two halves, one for each channel.
[[nodiscard]] QWidget* make_results_panel(FrontPanel& panel, QWidget* parent);

} // namespace kv408::ui
