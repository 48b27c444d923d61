#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include "analysis/mask.h"

namespace kv408 {

/// What is wrong with the text of a mask.
struct MaskFileError {
    int line = 0;     ///< of the text, 1 the first
    std::string what; ///< a sentence without its full stop

    friend bool operator==(const MaskFileError&, const MaskFileError&) = default;
};

/// Bounds of a mask's text.
inline constexpr std::size_t most_mask_bytes = 65536;
inline constexpr std::size_t most_mask_polygons = 64;
inline constexpr std::size_t most_mask_points = 256;
/// Neither x nor y lies further from 0 than this, in the unit of the text.
inline constexpr double largest_mask_value = 1e9;

/// The mask that `text` describes, or the first thing that is wrong with it. The text is YAML, of
/// which this much is read, and all else is an error:
///
///     # remarks, from a # at the start of a line or behind a blank
///     name: Hexagon             what people call it; may stand in single or double quotes
///     source: own               where the corners are from; may be left out
///     x: ui                     ui (unit intervals), s, ns or ps
///     y: amplitude              amplitude (with ui), V or mV (with the others)
///     hit ratio: 0              the share of hits that is let pass; may be left out: 0
///     polygons:
///       - name: inner           may be left out
///         points:
///           - [0.2, 0.5]
///           - [0.5, 0.9]
///           - [0.8, 0.5]
///
/// The keys of the mask come in any order before `polygons`. Lines are indented with blanks, each
/// level alike.
[[nodiscard]] std::variant<Mask, MaskFileError> mask_in(std::string_view text);

} // namespace kv408
