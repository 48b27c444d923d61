#pragma once

#include <optional>

#include "panel/controls.h"

namespace kv408 {

/// The numbers that a box takes.
struct TypedRange {
    double least = 0.0;
    double most = 0.0;
};

/// The level that `box` says, "0.12", "120mV": millivolts; nothing where it is
/// empty, and where it says none that can be taken, for which it is marked.
[[nodiscard]] std::optional<double> typed_level(TextBox& box);

/// The time that it says, "1.6ns", "1.6e-9": picoseconds, of `range` in these.
[[nodiscard]] std::optional<double> typed_time(TextBox& box, TypedRange range);

/// The whole number that `box` says, in `range`.
[[nodiscard]] std::optional<int> typed_whole(TextBox& box, TypedRange range);

/// The ratio that `box` says, in `range`: "1e-6".
[[nodiscard]] std::optional<double> typed_ratio(TextBox& box, TypedRange range);

/// A second, the longest time that is taken, picoseconds.
inline constexpr double longest_typed_time = 1e12;
/// A picosecond, the shortest unit interval.
inline constexpr double least_typed_interval = 1.0;
/// A kilovolt, the highest level, millivolts.
inline constexpr double highest_typed_level = 1e6;

} // namespace kv408
