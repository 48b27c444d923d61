#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>

#include "scope/program.h"
#include "state/plot_geometry.h"

namespace kv408 {

/// Row of the trace of `channel` in column `column` of the picture, the uppermost if it has
/// several; -1 when it has none.
inline int trace_row(Program& program, Channel channel, int column) {
    const Surface& picture = program.scope.picture().surface();
    const Pixel colour = pixel_of(program.scope.parts().colours.channel(channel));
    for (int row = 0; row < plot::height; ++row) {
        if (picture.at(column, row) == colour) {
            return row;
        }
    }
    return -1;
}

/// The uppermost row of `picture` that has `colour`; -1 without one.
inline int top_row(const Surface& picture, Colour colour) {
    for (int y = 0; y < picture.height(); ++y) {
        const auto row = picture.row(y);
        if (std::find(row.begin(), row.end(), pixel_of(colour)) != row.end()) {
            return y;
        }
    }
    return -1;
}

/// Row of the plot that `marker` marks.
inline int marker_row(const MarkerLabel& marker) {
    return marker.marked().value();
}

/// Millivolts of a read-out like "C1: -12.5mV".
inline double millivolts_of(const std::string& caption) {
    const char* const number = caption.c_str() + caption.find(": ") + 2;
    char* end = nullptr;
    const double value = std::strtod(number, &end);
    switch (*end) {
    case 'u':
        return value / 1000.0;
    case 'm':
        return value;
    default:
        return value * 1000.0;
    }
}

/// Drags the adjust wheel to `value` for the tab at `tab` and lets go.
inline void turn_wheel(Program& program, int tab, int value) {
    program.scope.act([&] {
        program.scope.panel().tabstrip2.select(tab);
        program.scope.panel().slider1.turn_to(value);
    });
}

} // namespace kv408
