#pragma once

#include <QMenuBar>

#include "ui/scope_driver.h"

namespace kv408::ui {

/// Fills `bar` with the menus of the main window, each entry bound to its control, and with the
/// entry `copy_picture`, which has none.
void fill_menus(QMenuBar& bar, ScopeDriver& driver, QAction& copy_picture);

} // namespace kv408::ui
