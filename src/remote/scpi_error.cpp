#include "remote/scpi_error.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "remote/replies.h"

namespace kv408 {
namespace {

struct Named {
    ScpiError error;
    const char* text;
};

constexpr std::array<Named, 29> texts = {{
    {ScpiError::none, "No error"},
    {ScpiError::invalid_character, "Invalid character"},
    {ScpiError::syntax_error, "Syntax error"},
    {ScpiError::invalid_separator, "Invalid separator"},
    {ScpiError::data_type_error, "Data type error"},
    {ScpiError::parameter_not_allowed, "Parameter not allowed"},
    {ScpiError::missing_parameter, "Missing parameter"},
    {ScpiError::header_separator_error, "Header separator error"},
    {ScpiError::mnemonic_too_long, "Program mnemonic too long"},
    {ScpiError::undefined_header, "Undefined header"},
    {ScpiError::suffix_out_of_range, "Header suffix out of range"},
    {ScpiError::invalid_number, "Invalid character in number"},
    {ScpiError::exponent_too_large, "Exponent too large"},
    {ScpiError::too_many_digits, "Too many digits"},
    {ScpiError::invalid_suffix, "Invalid suffix"},
    {ScpiError::suffix_too_long, "Suffix too long"},
    {ScpiError::word_too_long, "Character data too long"},
    {ScpiError::invalid_string, "Invalid string data"},
    {ScpiError::invalid_block, "Invalid block data"},
    {ScpiError::expression_not_allowed, "Expression data not allowed"},
    {ScpiError::command_protected, "Command protected"},
    {ScpiError::settings_conflict, "Settings conflict"},
    {ScpiError::data_out_of_range, "Data out of range"},
    {ScpiError::illegal_value, "Illegal parameter value"},
    {ScpiError::data_stale, "Data corrupt or stale"},
    {ScpiError::hardware_error, "Hardware error"},
    {ScpiError::queue_overflow, "Queue overflow"},
    {ScpiError::input_overrun, "Input buffer overrun"},
    {ScpiError::time_out, "Time out error"},
}};

// The most characters of an error's string, by SCPI-99, volume 2, chapter 21.8.
constexpr std::size_t longest_text = 255;

std::string entry_of(ScpiError error, const std::string& detail) {
    std::string text = text_of(error);
    if (!detail.empty()) {
        text += ';' + detail;
    }
    text.resize(std::min(text.size(), longest_text));
    for (char& letter : text) {
        if (static_cast<unsigned char>(letter) < ' ') {
            letter = ' '; // a line end would end the reply
        }
    }
    return whole_reply(static_cast<int>(error)) + ',' + string_reply(text);
}

} // namespace

const char* text_of(ScpiError error) {
    const auto* const named = std::find_if(
        texts.begin(), texts.end(), [error](const Named& one) { return one.error == error; });
    assert(named != texts.end());
    return named->text;
}

bool is_command_error(ScpiError error) {
    return static_cast<int>(error) <= -100 && static_cast<int>(error) > -200;
}

void ErrorQueue::add(ScpiError error, const std::string& detail) {
    if (waiting_.size() < most) {
        waiting_.push_back(entry_of(error, detail));
    } else {
        waiting_.back() = entry_of(ScpiError::queue_overflow, {});
    }
}

std::string ErrorQueue::take() {
    if (waiting_.empty()) {
        return entry_of(ScpiError::none, {});
    }
    std::string oldest = std::move(waiting_.front());
    waiting_.pop_front();
    return oldest;
}

} // namespace kv408
