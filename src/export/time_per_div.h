#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kv408 {

/// A time per division of `picoseconds`, which is above 0, as the panel writes it: "20ns", "2.5us".
[[nodiscard]] std::string time_per_div_text(double picoseconds);

/// The picoseconds that such a text says; nothing for any other text.
[[nodiscard]] std::optional<double> time_per_div_in(std::string_view text);

} // namespace kv408
