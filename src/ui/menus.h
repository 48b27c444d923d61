#pragma once

#include <QAction>
#include <QList>
#include <QMenuBar>

#include "ui/scope_driver.h"

namespace kv408::ui {

/// Fills `bar` with the menus of the main window, each entry bound to its control, and with the
/// entries `copying` and `viewing`, which have none.
void fill_menus(QMenuBar& bar, ScopeDriver& driver, const QList<QAction*>& copying,
                const QList<QAction*>& viewing);

} // namespace kv408::ui
