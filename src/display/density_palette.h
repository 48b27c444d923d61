#pragma once

#include <array>
#include <cstdint>

#include "display/surface.h"
#include "state/colour.h"

namespace kv408 {

/// Bands by which a density is coloured, each reaching to twice the hits of the one below.
inline constexpr int density_bands = 7;

/// The colours of the bands, that of the fewest hits first.
using DensityColours = std::array<Pixel, density_bands>;

/// What a density is coloured with.
enum class DensityPalette {
    cividis, ///< from blue to yellow, readable for colour-blind people as well
    channel, ///< shades of the channel's own colour
};

/// How many hits each band but the last ends at, that of the fewest first.
using DensityBandEnds = std::array<std::uint32_t, density_bands - 1>;

/// The ends of the bands where the most hit place has `most` hits.
[[nodiscard]] DensityBandEnds density_band_ends(std::uint32_t most);

/// The colours of `palette` for a channel of the colour `own` on a ground of the colour `ground`.
[[nodiscard]] DensityColours density_colours(DensityPalette palette, Colour own, Colour ground);

/// The band of `hits`, at least 1, where the most hit place has `most`, as many or more: band k
/// ends at `most` / 2^(6 - k), rounded down.
[[nodiscard]] int density_band(std::uint32_t hits, std::uint32_t most);

} // namespace kv408
