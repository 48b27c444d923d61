#pragma once

#include <QMenuBar>

#include "ui/scope_driver.h"

namespace kv408::ui {

/// Fills `bar` with the menus of the main window, each entry bound to its control.
void fill_menus(QMenuBar& bar, ScopeDriver& driver);

} // namespace kv408::ui
