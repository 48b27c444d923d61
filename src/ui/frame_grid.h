#pragma once

#include <QGridLayout>
#include <QWidget>

namespace kv408::ui {

/// Makes the grid that the rows of every frame lie on: `rows` rows of one height over `widget`, or
/// for a part of a frame where that is null.
[[nodiscard]] QGridLayout* make_frame_grid(QWidget* widget, int rows);

/// Lets the rows of `widget`'s layout, and of those within it, share whatever height there is, each
/// of its widgets in the middle of its row.
void spread_rows(QWidget& widget);

} // namespace kv408::ui
