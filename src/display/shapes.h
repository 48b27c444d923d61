#pragma once

#include "display/canvas.h"

namespace kv408 {

/// All bits of a pixel but its opacity: those that differ in an inverted picture.
inline constexpr Pixel bits_of_a_colour = 0x00FFFFFFU;

/// Fills `area` with `colour`; its right and bottom edge stay out. An empty area has no pixel.
void fill_rectangle(const Canvas& canvas, Rectangle area, Pixel colour);

/// Flips the 24 colour bits of every pixel of `area`; its right and bottom edge stay out. Doing it
/// twice restores the pixels.
void invert_rectangle(const Canvas& canvas, Rectangle area);

/// Draws the ellipse inscribed in `bounds`, whose right and bottom edge stay out: the pixels whose
/// centres lie in or on the ellipse, those with a neighbour outside it (above, below, left or
/// right) in `outline`, the others in `inside`. Empty bounds have no pixel.
void draw_ellipse(const Canvas& canvas, Rectangle bounds, Pixel outline, Pixel inside);

} // namespace kv408
