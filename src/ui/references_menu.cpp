#include "ui/references_menu.h"

namespace kv408::ui {

void fill_references_menu(QMenu& menu, ScopeDriver& /*driver*/) {
    menu.menuAction()->setEnabled(!menu.isEmpty());
}

} // namespace kv408::ui
