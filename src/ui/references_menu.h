#pragma once

#include <QMenu>

#include "ui/scope_driver.h"

namespace kv408::ui {

/// Fills `menu`, the menu of the references.
void fill_references_menu(QMenu& menu, ScopeDriver& driver);

} // namespace kv408::ui
