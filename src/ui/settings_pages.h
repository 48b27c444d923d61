#pragma once

// The three pages of the settings dialog, each with its widgets made, described and bound.

#include <QWidget>

#include "display/settings_controls.h"
#include "ui/scope_driver.h"

namespace kv408::ui {

/// Makes the page of its name for `controls`.
[[nodiscard]] QWidget* make_snapshot_page(SettingsControls& controls, ScopeDriver& driver);
[[nodiscard]] QWidget* make_display_page(SettingsControls& controls, ScopeDriver& driver);
[[nodiscard]] QWidget* make_colours_page(SettingsControls& controls, ScopeDriver& driver);

} // namespace kv408::ui
