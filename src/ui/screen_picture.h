#pragma once

#include <QWidget>

#include "display/surface.h"

namespace kv408::ui {

/// What the visible parts of `screen` show now, within the rectangle around all of them: each pixel
/// as the window shows it on a screen of its density, also where a part is scrolled out of sight or
/// another window covers it. The window need not be painted before.
[[nodiscard]] Surface picture_of_screen(QWidget& screen);

} // namespace kv408::ui
