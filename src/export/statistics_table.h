#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "measure/statistics.h"

namespace kv408 {

/// The columns of the table of statistics, with their headings.
namespace statistics_column {
inline constexpr std::size_t value = 0;
inline constexpr std::size_t present = 1;
inline constexpr std::size_t mean = 2;
inline constexpr std::size_t deviation = 3;
inline constexpr std::size_t least = 4;
inline constexpr std::size_t greatest = 5;
inline constexpr std::size_t count = 6;
inline constexpr std::size_t outside = 7;
inline constexpr std::size_t without = 8;
} // namespace statistics_column
inline constexpr std::array<std::string_view, 9> statistics_headings = {
    "Value",    "Present", "Mean",    "Std dev",      "Least",
    "Greatest", "Count",   "Outside", "Without value"};

/// The cells of a row of the table.
using StatisticsCells = std::array<std::string, statistics_headings.size()>;

/// "CH1 VMax": what row `row` of `measurement_rows` of channel index `channel` is called.
[[nodiscard]] std::string value_name(std::size_t channel, std::size_t row);

/// The value of the last sweep with its unit, as the results panel shows it; empty without one.
[[nodiscard]] std::string present_text(const Statistics& statistics, std::size_t channel,
                                       std::size_t row);

/// Whether the value of the last sweep lies outside its limits.
[[nodiscard]] bool is_outside(const Statistics& statistics, std::size_t channel, std::size_t row);

/// The table's row for one value, for people.
[[nodiscard]] StatisticsCells statistics_cells(const Statistics& statistics, std::size_t channel,
                                               std::size_t row);

/// The whole table with headings, separated by tabs, as a spreadsheet takes it from the clipboard:
/// numbers in volts, seconds and hertz.
[[nodiscard]] std::string statistics_table(const Statistics& statistics);

} // namespace kv408
