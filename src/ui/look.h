#pragma once

// How the window looks: a dark and a light palette on one style, the same on every system.

#include <functional>

#include <QPalette>

class QWidget;

namespace kv408::ui {

/// The two looks.
enum class Look { dark, light };

/// The look of the desktop that the application runs on; dark where no desktop tells.
[[nodiscard]] Look desktop_look();

/// The palette of `look`. The frames lie on `Window` in `AlternateBase`, outlined in `Mid`.
[[nodiscard]] QPalette palette_of(Look look);

/// Gives the application the style and the palette of `look`.
void apply_look(Look look);

/// Keeps the application's palette that of the look that `desktop` tells, from the next time on
/// that the desktop tells `window`, one of the application's top windows, of a change.
void follow_desktop_look(QWidget& window, std::function<Look()> desktop = desktop_look);

} // namespace kv408::ui
