#pragma once

#include <array>

#include "state/colour.h"
#include "state/plot_geometry.h"

namespace kv408 {

/// Largest persistence depth: every generation fades, the oldest one step above the background.
inline constexpr int deepest_persistence = plot::generations;

/// One colour per generation, 0 the newest.
using PersistenceColours = std::array<Colour, plot::generations>;

/// The colours that fade from `channel` to `background` over `depth` (0..9) generations; the older
/// ones get the background colour itself. Each component falls by equal whole steps, a fraction of
/// a step being rounded toward minus infinity; a component that leaves 0..255 that way is held.
[[nodiscard]] PersistenceColours persistence_colours(Colour channel, Colour background, int depth);

} // namespace kv408
