#pragma once

#include <QLabel>

#include "panel/controls.h"
#include "ui/widget_maker.h"

namespace kv408::ui {

/// Makes a label of the screen that shows `control` and keeps its place while it is hidden.
[[nodiscard]] QLabel* make_screen_label(QWidget* parent, Label& control, const Words& words);

} // namespace kv408::ui
