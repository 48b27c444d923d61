#include "ui/frame_grid.h"

#include "ui/frames.h"

namespace kv408::ui {
namespace {

void spread(QLayout& layout) {
    for (int index = 0; index < layout.count(); ++index) {
        QLayoutItem& item = *layout.itemAt(index);
        if (item.layout() != nullptr) {
            spread(*item.layout());
        } else {
            item.setAlignment(item.alignment() | Qt::AlignVCenter);
        }
    }
    layout.invalidate();
}

} // namespace

QGridLayout* make_frame_grid(QWidget* widget, int rows) {
    auto* const grid = new QGridLayout(widget);
    // The frame's own contents margins are all the margin there is.
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(frame_measure::column_spacing);
    grid->setVerticalSpacing(frame_measure::row_spacing);
    for (int row = 0; row < rows; ++row) {
        grid->setRowMinimumHeight(row, frame_measure::row_height);
        grid->setRowStretch(row, 1);
    }
    return grid;
}

void spread_rows(QWidget& widget) {
    spread(*widget.layout());
}

} // namespace kv408::ui
