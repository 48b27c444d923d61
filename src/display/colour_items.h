#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "state/colour.h"

namespace kv408 {

/// Number of colours that the user can choose.
inline constexpr std::size_t colour_items = 7;

/// What each of them is called, in the order in which they are listed.
inline constexpr std::array<std::string_view, colour_items> colour_captions = {
    "CH1 trace", "CH2 trace",       "Background", "Normal Text",
    "Grid",      "Text Background", "Annotations"};

/// The colours in the order in which they are listed.
using ItemColours = std::array<Colour, colour_items>;

/// The colours of `table` as they are listed.
[[nodiscard]] constexpr ItemColours items_of(const ColourTable& table) {
    return {table.ch1,         table.ch2,  table.background,
            table.normal_text, table.grid, table.text_background,
            table.annotations};
}

/// The table of the listed colours `items`.
[[nodiscard]] constexpr ColourTable table_of(const ItemColours& items) {
    return {.ch1 = items[0],
            .ch2 = items[1],
            .background = items[2],
            .normal_text = items[3],
            .grid = items[4],
            .text_background = items[5],
            .annotations = items[6]};
}

} // namespace kv408
