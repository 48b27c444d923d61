#include "ui/control_panel.h"

#include <QGridLayout>

#include "ui/frame_grid.h"
#include "ui/frames.h"

namespace kv408::ui {
namespace {

constexpr int panel_width = 540;
constexpr int gap = 6;

/// Beyond this the rows would no longer hold together.
constexpr int greatest_height = 1040;

} // namespace

QWidget* make_control_panel(ScopeDriver& driver) {
    auto* const panel = new QWidget;
    panel->setFixedWidth(panel_width);
    panel->setMaximumHeight(greatest_height);
    auto* const grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(gap);
    const auto add = [grid](QWidget* frame, int row, int column, int columns) {
        spread_rows(*frame);
        grid->addWidget(frame, row, column, 1, columns);
    };
    add(make_display_frame(driver), 0, 0, 1);
    add(make_measurement_frame(driver), 0, 1, 1);
    add(make_trigger_frame(driver), 1, 0, 1);
    add(make_horizontal_frame(driver), 1, 1, 1);
    add(make_vertical_frame(driver), 2, 0, 2);
    add(make_cursor_frame(driver), 3, 0, 2);
    add(make_adjust_frame(driver), 4, 0, 2);
    add(make_status_frame(driver), 5, 0, 2);
    grid->addWidget(make_buttons(driver), 6, 0, 1, 2);
    // Both columns alike; what height is left goes to the frames by the rows they hold.
    grid->setColumnMinimumWidth(0, (panel_width - gap) / 2);
    grid->setColumnMinimumWidth(1, (panel_width - gap) / 2);
    int row = 0;
    for (const int rows : {4, 5, 4, 1, 2, 1}) {
        grid->setRowStretch(row++, rows);
    }
    return panel;
}

} // namespace kv408::ui
