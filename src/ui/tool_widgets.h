#pragma once

// What the windows of the tools have in common.

#include <functional>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/told_text.h"
#include "ui/widget_maker.h"

namespace kv408::ui {

/// The layout of `window`, a tool's: its parts stand one below the other and are scrolled where the
/// screen has too little room for them.
[[nodiscard]] QVBoxLayout* make_window_layout(QWidget& window);

/// Puts `row`, the buttons of `window`, below its parts, where they are always in sight.
void add_ending(QWidget& window, QLayout* row);

/// The grid of a tool's frame, whose second column takes what width is spare.
[[nodiscard]] QGridLayout* make_tool_grid(QWidget* frame);

/// Two grids of a tool's frame, side by side, of the same width.
struct TwoGrids {
    QGridLayout& left;
    QGridLayout& right;
};

/// The grids of `frame`, whose only content they are.
[[nodiscard]] TwoGrids make_two_grids(QWidget& frame);

/// Puts `widget` into row `row` of `grid`, behind its `caption`.
void add_captioned(QGridLayout& grid, int row, const QString& caption, QWidget* widget);

/// A text of `control` that may be long: broken into lines, to be selected and copied.
[[nodiscard]] QLabel* make_told(WidgetMaker& make, Label& control, const Words& words);

/// The same for a text that changes every second or more often. It cannot be selected: text that
/// can be is laid out anew far more slowly.
[[nodiscard]] ToldText* make_changing(WidgetMaker& make, Label& control, const Words& words);

/// A button of `window` named `name` that no control stands behind: it does `pressed`.
[[nodiscard]] QPushButton* make_plain_button(QWidget& window, const QString& name,
                                             const QString& caption, const Words& words,
                                             std::function<void()> pressed);

/// Shows `window` and brings it to the front; one that is not shown yet gets its place beside
/// `main_window`, so that `keep`, a part of that, is seen.
void present_beside(QWidget& window, const QWidget& main_window, const QWidget& keep);

} // namespace kv408::ui
