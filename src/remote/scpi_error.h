#pragma once

#include <cstddef>
#include <deque>
#include <string>

namespace kv408 {

/// The errors of SCPI-99, volume 2, chapter 21.8, that this program reports.
enum class ScpiError : int {
    none = 0,
    invalid_character = -101,
    syntax_error = -102,
    invalid_separator = -103,
    data_type_error = -104,
    parameter_not_allowed = -108, ///< too many
    missing_parameter = -109,
    header_separator_error = -111,
    mnemonic_too_long = -112,
    undefined_header = -113,
    suffix_out_of_range = -114, ///< the number behind a node of the header
    invalid_number = -121,
    exponent_too_large = -123,
    too_many_digits = -124,
    invalid_suffix = -131, ///< the unit behind a number
    suffix_too_long = -134,
    word_too_long = -144,
    invalid_string = -151,
    invalid_block = -161,
    expression_not_allowed = -178,
    command_protected = -203,
    settings_conflict = -221,
    data_out_of_range = -222,
    illegal_value = -224, ///< not one of the choices
    data_stale = -230,
    hardware_error = -240,
    queue_overflow = -350,
    input_overrun = -363,
    time_out = -365,
};

/// The standard's text for `error`.
[[nodiscard]] const char* text_of(ScpiError error);

/// True for a command error: one of the language, numbers -100 to -199.
[[nodiscard]] bool is_command_error(ScpiError error);

/// Thrown where a command cannot be taken or done.
struct Refused {
    ScpiError error;
    std::string detail = {}; ///< what the standard's text does not tell, empty for nothing
};

/// The errors that a client has not asked for yet.
class ErrorQueue {
public:
    /// How many errors wait at most.
    static constexpr std::size_t most = 20;

    /// Adds `error`, with `detail` behind the standard's text unless that is empty. Where there is
    /// no room the newest error in the queue becomes "Queue overflow".
    void add(ScpiError error, const std::string& detail = {});

    /// Takes the oldest out, as `-113,"Undefined header"`; `0,"No error"` when there is none.
    std::string take();

    [[nodiscard]] std::size_t size() const { return waiting_.size(); }
    void clear() { waiting_.clear(); }

private:
    std::deque<std::string> waiting_;
};

} // namespace kv408
