#pragma once

#include <array>
#include <cstdint>

#include "state/samples.h"

namespace kv408 {

/// Which point of a block stands in each column of the plot, 1..650; entry 0 means nothing. A block
/// is stretched over the plot by showing a point twice each time that the sum of the steps
/// `hstretch` (TimeBaseState::hstretch) has run one column ahead.
[[nodiscard]] constexpr std::array<std::int16_t, npoints + 1> block_points(double hstretch) {
    std::array<std::int16_t, npoints + 1> points = {};
    double stretchpos = 1.0;
    std::int16_t point = 0;
    for (std::int32_t column = 1; column <= npoints; ++column) {
        points[static_cast<std::size_t>(column)] = point;
        stretchpos += hstretch;
        ++point;
        if (stretchpos - 1.0 > column) {
            stretchpos -= hstretch;
            --point;
        }
    }
    return points;
}

} // namespace kv408
