#pragma once

#include "panel/front_panel.h"

namespace kv408::ui {

/// Disables the controls that have their place in the window but no function behind them yet.
void disable_what_is_to_come(FrontPanel& panel);

} // namespace kv408::ui
