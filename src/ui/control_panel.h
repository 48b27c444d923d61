#pragma once

#include <QWidget>

#include "ui/scope_driver.h"

namespace kv408::ui {

/// Makes the right half of the window: the frames of controls on an even grid of two columns.
[[nodiscard]] QWidget* make_control_panel(ScopeDriver& driver);

} // namespace kv408::ui
