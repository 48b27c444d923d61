#include "display/persistence_colours.h"

#include <algorithm>

namespace kv408 {
namespace {

int divide_downward(int dividend, int divisor) {
    const int quotient = dividend / divisor;
    return dividend % divisor < 0 ? quotient - 1 : quotient;
}

/// One colour component of generation `generation`.
std::uint8_t faded(int channel, int background, int depth, int generation) {
    const int step = divide_downward(channel - background, depth + 1);
    return static_cast<std::uint8_t>(std::clamp(channel - step * (generation + 1), 0, 255));
}

} // namespace

PersistenceColours persistence_colours(Colour channel, Colour background, int depth) {
    PersistenceColours colours;
    colours.fill(background);
    for (int generation = 0; generation < depth; ++generation) {
        colours[static_cast<std::size_t>(generation)] =
            rgb(faded(red_of(channel), red_of(background), depth, generation),
                faded(green_of(channel), green_of(background), depth, generation),
                faded(blue_of(channel), blue_of(background), depth, generation));
    }
    return colours;
}

} // namespace kv408
