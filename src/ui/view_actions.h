#pragma once

#include <QAction>
#include <QMainWindow>

#include "ui/window_halves.h"

namespace kv408::ui {

/// The menu entries that give the plot more room.
struct ViewActions {
    /// Entries for `window`, which holds `halves`.
    ViewActions(QMainWindow& window, WindowHalves& halves);

    QAction* full_screen; ///< checked while the window is shown full screen
    QAction* hide_panel;  ///< checked while the panel is hidden
};

} // namespace kv408::ui
