#pragma once

#include <QWidget>

namespace kv408::ui {

/// Lets the mouse wheel turn the lists, sliders, number boxes and tabs that are in `parent` now
/// only while they have the keyboard focus, which it does not give them. Otherwise it goes to what
/// they lie in, which may scroll.
void let_wheel_turn_only_what_has_focus(QWidget& parent);

} // namespace kv408::ui
