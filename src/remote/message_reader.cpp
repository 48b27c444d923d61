#include "remote/message_reader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "remote/letters.h"

namespace kv408 {
namespace {

// The limits of IEEE 488.2, chapter 7, for words and numbers.
constexpr std::size_t longest_word = 12;
constexpr std::size_t most_digits = 255;
constexpr int largest_exponent = 32000;

bool is_of_word(char byte) {
    return is_letter(byte) || is_digit(byte) || byte == '_';
}

// White space of a line: all control characters but the line's end, and the blank.
bool is_white(char byte) {
    return static_cast<unsigned char>(byte) <= ' ' && byte != '\n';
}

} // namespace

bool MessageReader::here_is(std::string_view any) const {
    return !at_end() && any.find(line_[place_]) != std::string_view::npos;
}

bool MessageReader::skip_white() {
    const std::size_t before = place_;
    while (!at_end() && is_white(line_[place_])) {
        ++place_;
    }
    return place_ != before;
}

std::optional<MessageUnit> MessageReader::next() {
    while (skip_white() || here_is(";")) {
        place_ += here_is(";") ? 1 : 0;
    }
    if (at_end()) {
        return std::nullopt;
    }
    MessageUnit unit;
    read_header(unit);
    const bool apart = skip_white();
    if (!at_end() && !here_is(";")) {
        if (!apart) {
            throw Refused{ScpiError::header_separator_error};
        }
        read_parameters(unit);
    }
    return unit;
}

void MessageReader::read_header(MessageUnit& unit) {
    if (here_is("*")) {
        ++place_;
        unit.nodes.push_back('*' + read_mnemonic());
    } else {
        if (here_is(":")) {
            unit.from_root = true;
            ++place_;
        }
        unit.nodes.push_back(read_mnemonic());
        while (here_is(":")) {
            ++place_;
            unit.nodes.push_back(read_mnemonic());
        }
    }
    if (here_is("?")) {
        unit.query = true;
        ++place_;
    }
}

std::string MessageReader::read_mnemonic() {
    if (!is_letter(here())) {
        throw Refused{at_end() || is_white(here()) || here_is(":;?")
                          ? ScpiError::syntax_error
                          : ScpiError::invalid_character};
    }
    const std::size_t start = place_;
    while (is_of_word(here())) {
        ++place_;
    }
    if (place_ - start > longest_word) {
        throw Refused{ScpiError::mnemonic_too_long};
    }
    return line_.substr(start, place_ - start);
}

void MessageReader::read_parameters(MessageUnit& unit) {
    for (;;) {
        unit.parameters.push_back(read_parameter());
        skip_white();
        if (at_end() || here_is(";")) {
            return;
        }
        if (!here_is(",")) {
            throw Refused{ScpiError::invalid_separator};
        }
        ++place_;
        skip_white();
    }
}

Parameter MessageReader::read_parameter() {
    const char first = here();
    if (is_letter(first)) {
        const std::size_t start = place_;
        while (is_of_word(here())) {
            ++place_;
        }
        if (place_ - start > longest_word) {
            throw Refused{ScpiError::word_too_long};
        }
        return {Parameter::Kind::word, line_.substr(start, place_ - start)};
    }
    if (is_digit(first) || here_is("+-.")) {
        return read_number();
    }
    if (here_is("\"'")) {
        return read_string();
    }
    if (first == '#') {
        ++place_;
        return is_digit(here()) ? read_block() : read_in_base();
    }
    if (first == '(') {
        throw Refused{ScpiError::expression_not_allowed};
    }
    throw Refused{at_end() || here_is(",;") ? ScpiError::syntax_error
                                            : ScpiError::invalid_character};
}

Parameter MessageReader::read_number() {
    Parameter number{Parameter::Kind::number, {}};
    if (here_is("+-")) {
        if (here() == '-') {
            number.text = '-';
        }
        ++place_;
    }
    std::size_t digits = 0;
    bool point = false;
    for (; is_digit(here()) || (here() == '.' && !point); ++place_) {
        point = point || here() == '.';
        // Leading zeros do not count as digits.
        const bool leading_zero = here() == '0' && digits == 0 && !point;
        digits += is_digit(here()) && !leading_zero ? 1 : 0;
        number.text += here();
    }
    if (std::none_of(number.text.begin(), number.text.end(), is_digit)) {
        throw Refused{ScpiError::invalid_number};
    }
    if (digits > most_digits) {
        throw Refused{ScpiError::too_many_digits};
    }
    number.exponent = read_exponent();
    skip_white();
    for (; is_letter(here()) || here_is("/."); ++place_) {
        number.unit += capital(here());
    }
    if (number.unit.size() > longest_word) {
        throw Refused{ScpiError::suffix_too_long};
    }
    return number;
}

int MessageReader::read_exponent() {
    const std::size_t before = place_;
    skip_white();
    bool negative = false;
    if (here_is("eE")) {
        ++place_;
        skip_white();
        if (here_is("+-")) {
            negative = here() == '-';
            ++place_;
        }
        int exponent = 0;
        const std::size_t start = place_;
        for (; is_digit(here()); ++place_) {
            exponent = std::min(exponent * 10 + (here() - '0'), largest_exponent + 1);
        }
        if (exponent > largest_exponent) {
            throw Refused{ScpiError::exponent_too_large};
        }
        if (place_ != start) {
            return negative ? -exponent : exponent;
        }
    }
    place_ = before; // the letter begins a unit
    return 0;
}

Parameter MessageReader::read_in_base() {
    const char letter = capital(here());
    const int base = letter == 'H' ? 16 : letter == 'Q' ? 8 : letter == 'B' ? 2 : 0;
    if (base == 0) {
        throw Refused{ScpiError::syntax_error};
    }
    ++place_;
    std::uint64_t value = 0;
    const char* const start = line_.data() + place_;
    const auto [end, failed] = std::from_chars(start, line_.data() + line_.size(), value, base);
    if (failed == std::errc::result_out_of_range) {
        throw Refused{ScpiError::too_many_digits};
    }
    if (failed != std::errc{}) {
        throw Refused{ScpiError::invalid_number};
    }
    place_ += static_cast<std::size_t>(end - start);
    return {Parameter::Kind::number, std::to_string(value)};
}

Parameter MessageReader::read_string() {
    const char quote = here();
    Parameter string{Parameter::Kind::text, {}};
    for (;;) {
        ++place_;
        if (at_end()) {
            throw Refused{ScpiError::invalid_string};
        }
        if (here() == quote) {
            ++place_;
            if (here() != quote || at_end()) {
                return string;
            }
        }
        string.text += here();
    }
}

Parameter MessageReader::read_block() {
    std::size_t digits = static_cast<std::size_t>(here() - '0');
    ++place_;
    if (digits == 0) { // of indefinite length: nothing tells its end from a line's
        throw Refused{ScpiError::invalid_block};
    }
    std::size_t length = 0;
    for (; digits > 0; --digits, ++place_) {
        if (!is_digit(here())) {
            throw Refused{ScpiError::invalid_block};
        }
        length = length * 10 + static_cast<std::size_t>(here() - '0');
    }
    if (length > line_.size() - place_) {
        throw Refused{ScpiError::invalid_block};
    }
    Parameter block{Parameter::Kind::block, line_.substr(place_, length)};
    place_ += length;
    return block;
}

} // namespace kv408
