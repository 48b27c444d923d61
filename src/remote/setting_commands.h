#pragma once

// Commands that set one thing, and their queries.

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "remote/command_table.h"
#include "remote/values.h"

namespace kv408 {

// Each command says what it takes (`Command::value`).

/// The short forms of choices, as the manual writes them: "`NORMal`, `AVERage`".
[[nodiscard]] std::string choices_text(std::span<const std::string_view> choices);

/// What `range` is: "0.1 s to 3600 s, at first 10 s".
[[nodiscard]] std::string range_text(const NumberRange& range);

/// A query without parameters.
[[nodiscard]] Command query_command(std::string header, Command::Answer answer);

/// A numeric setting: `header <number>|MIN|MAX|DEF`, `header? [MIN|MAX|DEF]`.
struct NumberSetting {
    NumberRange range;
    std::function<void(const Call&, double)> set;
    std::function<double(const Call&)> get;
    std::function<NumberRange(const Call&)> range_now = {}; ///< used instead where it changes
    std::string told = {};                                  ///< what it takes then
};

/// Its command, which answers as a real number.
[[nodiscard]] Command real_setting(std::string header, const NumberSetting& setting);

/// Its command, which takes whole numbers and answers as one.
[[nodiscard]] Command whole_setting(std::string header, const NumberSetting& setting);

/// A setting that is one of `steps`, by its index; numbers between them are out of range. `preset`
/// is the index that `DEF` means.
struct StepSetting {
    std::vector<double> steps;
    Quantity quantity;
    std::size_t preset;
    std::function<void(const Call&, std::size_t)> set;
    std::function<std::size_t(const Call&)> get;
};

/// Its command, which answers as a real number.
[[nodiscard]] Command step_setting(std::string header, const StepSetting& setting);

/// A setting that is on or off.
[[nodiscard]] Command boolean_setting(std::string header,
                                      std::function<void(const Call&, bool)> set,
                                      std::function<bool(const Call&)> get);

/// One of `choices`, which outlive the command, by its index; answered in its short form.
[[nodiscard]] Command choice_setting(std::string header, std::span<const std::string_view> choices,
                                     std::function<void(const Call&, std::size_t)> set,
                                     std::function<std::size_t(const Call&)> get);

} // namespace kv408
