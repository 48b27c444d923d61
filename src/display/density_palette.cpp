#include "display/density_palette.h"

#include <algorithm>
#include <bit>

namespace kv408 {
namespace {

// Cividis, as Nuñez, Anderton and Renslow published it (PLoS ONE 13(7): e0199239, 2018): of its 256
// colours the ones with the numbers 36, 73, 109, 146, 182, 219 and 255. It steps evenly in
// lightness and looks nearly the same to people who cannot tell red from green; the darkest seventh
// is left out, which would not stand out from a black ground.
constexpr std::array cividis = {rgb(33, 59, 110),   rgb(76, 85, 108),   rgb(108, 110, 114),
                                rgb(142, 137, 120), rgb(177, 165, 112), rgb(217, 197, 92),
                                rgb(254, 232, 56)};
static_assert(cividis.size() == density_bands);

Colour between(Colour from, Colour to, int part, int whole) {
    const auto mixed = [part, whole](int a, int b) {
        return static_cast<std::uint8_t>((a * (whole - part) + b * part) / whole);
    };
    return rgb(mixed(red_of(from), red_of(to)), mixed(green_of(from), green_of(to)),
               mixed(blue_of(from), blue_of(to)));
}

} // namespace

DensityColours density_colours(DensityPalette palette, Colour own, Colour ground) {
    // The fewest hits still stand out from the ground.
    constexpr int steps = density_bands + 1;
    DensityColours colours = {};
    for (int band = 0; band < density_bands; ++band) {
        const auto index = static_cast<std::size_t>(band);
        colours[index] =
            pixel_of(palette == DensityPalette::cividis ? cividis[index]
                                                        : between(ground, own, band + 2, steps));
    }
    return colours;
}

DensityBandEnds density_band_ends(std::uint32_t most) {
    DensityBandEnds ends = {};
    for (std::size_t band = 0; band < ends.size(); ++band) {
        ends.at(band) = most >> (ends.size() - band);
    }
    return ends;
}

int density_band(std::uint32_t hits, std::uint32_t most) {
    // Of all numbers `most` / 2^n only that with as many binary digits as `hits` can end its band.
    const int halvings = std::bit_width(most) - std::bit_width(hits);
    const int band = density_bands - 1 - halvings;
    return std::max(hits > most >> halvings ? band + 1 : band, 0);
}

} // namespace kv408
