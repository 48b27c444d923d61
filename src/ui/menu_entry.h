#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenu>

#include "ui/bind.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// What the user sees of a menu's entry.
struct Entry {
    QString caption;
    QString tip;
    QKeySequence keys = {};
};

/// Adds an entry to `menu` that is bound to `control`.
template <typename Entered>
QAction* add_entry(QMenu& menu, Entered& control, ScopeDriver& driver, const Entry& entry) {
    auto* const action = new QAction(entry.caption, &menu);
    action->setToolTip(entry.tip);
    action->setShortcut(entry.keys);
    bind(action, control, driver);
    menu.addAction(action);
    return action;
}

/// Names `menu`, which shows the tips of its entries, for people who hear it: its title without the
/// mark of its letter.
inline QMenu& name_menu(QMenu& menu) {
    menu.setAccessibleName(menu.title().remove(u'&'));
    menu.setToolTipsVisible(true);
    return menu;
}

} // namespace kv408::ui
