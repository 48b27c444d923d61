#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "display/surface.h"

namespace kv408::test {

inline constexpr Pixel black = 0xFF000000U;
inline constexpr Pixel white = 0xFFFFFFFFU;
inline constexpr Pixel red = 0xFFFF0000U;
inline constexpr Pixel green = 0xFF00FF00U;

/// The ends of what a coordinate can be.
inline constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
inline constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

/// A surface as text, a row a string: '.' black, '#' white, 'r' red, 'g' green, '?' another colour.
inline std::vector<std::string> sketch(const Surface& surface) {
    std::vector<std::string> rows;
    for (int y = 0; y < surface.height(); ++y) {
        std::string& row = rows.emplace_back();
        for (const Pixel pixel : surface.row(y)) {
            row += pixel == black   ? '.'
                   : pixel == white ? '#'
                   : pixel == red   ? 'r'
                   : pixel == green ? 'g'
                                    : '?';
        }
    }
    return rows;
}

using Rows = std::vector<std::string>;

} // namespace kv408::test
