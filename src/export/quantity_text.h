#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kv408 {

/// `value` in `unit`, one of "V", "V^2", "V/s" and "Vs", for people: `digits` digits, a prefix from
/// f to T, and the unit. "12.5mV", "2.5GV/s"; before a square the prefix stands by itself, as it is
/// one of the whole unit: "40m V^2".
[[nodiscard]] std::string quantity_text(double value, std::string_view unit, int digits);

/// The same of a scale: at most three digits, and no zeros behind them: "50mV", "12.5mV".
[[nodiscard]] std::string scale_text(double value, std::string_view unit);

/// The quantity that the whole of `text` says in this way, with prefix and unit or without either:
/// "50m", "50 mV", "2.5e9". Nothing for any other text.
[[nodiscard]] std::optional<double> quantity_typed(std::string_view text, std::string_view unit);

} // namespace kv408
