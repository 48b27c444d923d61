#pragma once

// What the parameters of a command mean. Each of these throws `Refused` for one that is of the
// wrong type or outside what is allowed.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "remote/message_reader.h"

namespace kv408 {

/// What a number counts; bare numbers are in its base unit, with `microseconds` in those.
enum class Quantity { number, volts, seconds, hertz, microseconds };

/// What a numeric setting may be.
struct NumberRange {
    double least = 0.0;
    double most = 0.0;
    double preset = 0.0; ///< what `DEF` means
    Quantity quantity = Quantity::number;
};

/// The number that `parameter` is, within `range`; `MIN`, `MAX` and `DEF` (`MINimum`, ...) stand
/// for its ends and its preset.
[[nodiscard]] double number_of(const Parameter& parameter, const NumberRange& range);

/// The number that `parameter` is, whatever it is; `MIN`, `MAX` and `DEF` as above.
[[nodiscard]] double any_number_of(const Parameter& parameter, const NumberRange& range);

/// The same as `number_of` as a whole number: halves are rounded to even before the range is looked
/// at.
[[nodiscard]] std::int32_t whole_of(const Parameter& parameter, const NumberRange& range);

/// The number that a query about `range` is to answer: that of `MIN`, `MAX` or `DEF`.
[[nodiscard]] double limit_of(const Parameter& parameter, const NumberRange& range);

/// `ON`, `OFF`, or a number, of which all but those rounded to 0 are on.
[[nodiscard]] bool boolean_of(const Parameter& parameter);

/// Which of `choices`, written with their short forms in capitals, `parameter` is.
[[nodiscard]] std::size_t choice_of(const Parameter& parameter,
                                    std::span<const std::string_view> choices);

/// The text in quotes.
[[nodiscard]] const std::string& text_of(const Parameter& parameter);

/// The bytes of the block.
[[nodiscard]] const std::string& block_of(const Parameter& parameter);

} // namespace kv408
