#pragma once

// The frames of the control panel, each with its widgets made, described and bound.

#include <QWidget>

#include "panel/front_panel.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// Makes the frame of its name for the controls of the driver's panel.
[[nodiscard]] QWidget* make_display_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_measurement_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_trigger_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_horizontal_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_vertical_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_cursor_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_adjust_frame(ScopeDriver& driver);
[[nodiscard]] QWidget* make_status_frame(ScopeDriver& driver);

/// Makes the row of buttons under the frames: Start, Stop, Snapshot.
[[nodiscard]] QWidget* make_buttons(ScopeDriver& driver);

/// What the frames have in common.
namespace frame_measure {
inline constexpr int row_height = 24;    ///< of every row
inline constexpr int row_spacing = 4;    ///< between rows
inline constexpr int column_spacing = 8; ///< between columns
} // namespace frame_measure

} // namespace kv408::ui
