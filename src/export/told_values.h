#pragma once

#include <span>
#include <string>
#include <string_view>

#include "analysis/told.h"

namespace kv408 {

/// What a number that a window tells is in.
enum class ToldUnit { hits, ratio, share, volts, seconds, volts_per_second, percent, decibels };

/// A number that a window tells, or why there is none.
struct ToldValue {
    std::string name;
    Told<double> value; ///< in `unit`
    ToldUnit unit = ToldUnit::ratio;
    std::string remark = {}; ///< stands behind it in parentheses; may be empty
};

/// `number` of what was found, in `per_unit` parts of the unit; why there is none where nothing was
/// found at all, or no such number.
template <typename Found, typename Number>
[[nodiscard]] Told<double> told_of(const Told<Found>& found, double per_unit, Number number) {
    if (!found) {
        return found.why();
    }
    const Told<double> value = number(*found);
    return value ? Told<double>(*value / per_unit) : value;
}

/// `value` in `unit` for people: five digits, a prefix and the unit; hits as a
/// whole number, a share as "5e-05".
[[nodiscard]] std::string told_text(double value, ToldUnit unit);

/// The names of `values`, line by line.
[[nodiscard]] std::string told_names(std::span<const ToldValue> values);

/// What they are, line by line: the number with its remark, or the reason why there is none; dashes
/// where there is not one number, for a reason that is told elsewhere.
[[nodiscard]] std::string told_texts(std::span<const ToldValue> values);

/// Both as a table with headings, separated by tabs, for the clipboard: numbers without prefix,
/// each with its unit, and what `told_texts` has in parentheses or for a reason. `channel` is its
/// title.
[[nodiscard]] std::string told_table(std::span<const ToldValue> values, std::string_view channel);

} // namespace kv408
