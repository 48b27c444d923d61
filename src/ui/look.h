#pragma once

// How the window looks: a dark and a light palette on one style, the same on every system.

#include <QPalette>

namespace kv408::ui {

/// The two looks.
enum class Look { dark, light };

/// The look of the desktop that the application runs on; dark where no desktop tells.
[[nodiscard]] Look desktop_look();

/// The palette of `look`. The frames lie on `Window` in `AlternateBase`, outlined in `Mid`.
[[nodiscard]] QPalette palette_of(Look look);

/// Gives the application the style and the palette of `look`.
void apply_look(Look look);

/// Colours of the screen around the plot, which is dark in both looks.
namespace screen_colour {
inline constexpr QRgb surround = 0xFF0E1013;   ///< behind and around the plot
inline constexpr QRgb rule = 0xFF2A2F36;       ///< lines between its parts
inline constexpr QRgb text = 0xFFE8EAED;       ///< read-outs
inline constexpr QRgb faint_text = 0xFF9AA1AB; ///< captions
} // namespace screen_colour

} // namespace kv408::ui
