#pragma once

// The program's colours on widgets.

#include <optional>

#include <QColor>
#include <QWidget>

#include "state/colour.h"

namespace kv408::ui {

/// `colour` for Qt.
[[nodiscard]] QColor qcolor(Colour colour);

/// Black or white, whichever reads better on `background`.
[[nodiscard]] QColor readable_on(const QColor& background);

/// The colour that lies `part` (0..1) of the way from `from` to `to`.
[[nodiscard]] QColor mixed(const QColor& from, const QColor& to, double part);

/// Contrast of two colours by relative luminance, 1 (none) to 21 (black and white).
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

/// Gives `widget` text of colour `fore` on `back`; none keeps what it has. A back colour that comes
/// without a fore colour gets readable text.
void show_colours(QWidget& widget, std::optional<Colour> fore, std::optional<Colour> back);

/// Tells that `widget` paints its own background, in a shape of its own, out of its palette;
/// otherwise it is filled with its back colour.
void let_paint_itself(QWidget& widget);

/// Lets `widget` have the text colours of `leader`, now and whenever they change.
void follow_colours(QWidget& widget, QWidget& leader);

/// Fills `widget` with the translucent ground on which texts stand over the plot; for the beginning
/// of its painting.
void fill_plate(QWidget& widget);

} // namespace kv408::ui
