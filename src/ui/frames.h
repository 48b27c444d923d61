#pragma once

// The frames of the control panel, each with its widgets made, described and bound.

#include <QWidget>

#include "panel/front_panel.h"
#include "ui/panel_frame.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// Makes the frame of its name for the controls of the driver's panel.
[[nodiscard]] PanelFrame* make_display_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_measurement_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_trigger_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_horizontal_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_vertical_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_cursor_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_adjust_frame(ScopeDriver& driver);
[[nodiscard]] PanelFrame* make_status_frame(ScopeDriver& driver);

/// Makes the row of buttons under the frames: Start, Stop, Snapshot.
[[nodiscard]] QWidget* make_buttons(ScopeDriver& driver);

/// What the frames have in common.
namespace frame_measure {
inline constexpr int row_height = 22;    ///< of every row, at least
inline constexpr int row_spacing = 2;    ///< between rows, at least
inline constexpr int row_ease = 4;       ///< what every row has besides where there is room
inline constexpr int column_spacing = 8; ///< between columns
} // namespace frame_measure

} // namespace kv408::ui
