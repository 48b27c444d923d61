#include "remote/values.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "remote/header_pattern.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

const Parameter& of_kind(const Parameter& parameter, Parameter::Kind kind) {
    if (parameter.kind != kind) {
        throw Refused{ScpiError::data_type_error};
    }
    return parameter;
}

std::string_view base_unit(Quantity quantity) {
    switch (quantity) {
    case Quantity::volts:
        return "V";
    case Quantity::seconds:
    case Quantity::microseconds:
        return "S";
    case Quantity::hertz:
        return "HZ";
    case Quantity::number:
        break;
    }
    return "";
}

// The prefixes of SCPI-99, volume 1, table 7-1, as powers of ten.
constexpr std::array<std::pair<std::string_view, int>, 12> prefixes = {{{"", 0},
                                                                        {"EX", 18},
                                                                        {"PE", 15},
                                                                        {"T", 12},
                                                                        {"G", 9},
                                                                        {"MA", 6},
                                                                        {"K", 3},
                                                                        {"M", -3},
                                                                        {"U", -6},
                                                                        {"N", -9},
                                                                        {"P", -12},
                                                                        {"F", -15}}};

// The power of ten that `unit` stands for where `quantity` is meant.
int power_of(std::string_view unit, Quantity quantity) {
    if (unit.empty()) {
        return 0;
    }
    const std::string_view base = base_unit(quantity);
    if (base.empty() || unit.size() < base.size() || !unit.ends_with(base)) {
        throw Refused{ScpiError::invalid_suffix};
    }
    const std::string_view prefix = unit.substr(0, unit.size() - base.size());
    if (prefix == "M" && quantity == Quantity::hertz) {
        return 6; // the standard's exception
    }
    for (const auto& [name, power] : prefixes) {
        if (name == prefix) {
            constexpr int second_in_microseconds = 6;
            return power + (quantity == Quantity::microseconds ? second_in_microseconds : 0);
        }
    }
    throw Refused{ScpiError::invalid_suffix};
}

// The double nearest to the digits with their exponent, prefix included: 20NS is 2e-8 to the last
// bit.
double value_of(const Parameter& number, Quantity quantity) {
    const std::string text =
        number.text + 'e' + std::to_string(number.exponent + power_of(number.unit, quantity));
    double value = 0.0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::result_out_of_range) {
        throw Refused{ScpiError::data_out_of_range};
    }
    return value;
}

std::optional<double> named_limit(const Parameter& parameter, const NumberRange& range) {
    if (parameter.kind != Parameter::Kind::word) {
        return std::nullopt;
    }
    if (is_form_of(parameter.text, "MINimum")) {
        return range.least;
    }
    if (is_form_of(parameter.text, "MAXimum")) {
        return range.most;
    }
    if (is_form_of(parameter.text, "DEFault")) {
        return range.preset;
    }
    return std::nullopt;
}

double held_in(double value, const NumberRange& range) {
    if (!(value >= range.least && value <= range.most)) {
        throw Refused{ScpiError::data_out_of_range};
    }
    return value;
}

} // namespace

double any_number_of(const Parameter& parameter, const NumberRange& range) {
    if (const auto limit = named_limit(parameter, range)) {
        return *limit;
    }
    return value_of(of_kind(parameter, Parameter::Kind::number), range.quantity);
}

double number_of(const Parameter& parameter, const NumberRange& range) {
    return held_in(any_number_of(parameter, range), range);
}

std::int32_t whole_of(const Parameter& parameter, const NumberRange& range) {
    return round_to_int32(held_in(round_half_even(any_number_of(parameter, range)), range));
}

double limit_of(const Parameter& parameter, const NumberRange& range) {
    if (const auto limit = named_limit(parameter, range)) {
        return *limit;
    }
    throw Refused{parameter.kind == Parameter::Kind::word ? ScpiError::illegal_value
                                                          : ScpiError::data_type_error};
}

bool boolean_of(const Parameter& parameter) {
    if (parameter.kind == Parameter::Kind::word) {
        if (is_form_of(parameter.text, "ON")) {
            return true;
        }
        if (is_form_of(parameter.text, "OFF")) {
            return false;
        }
        throw Refused{ScpiError::illegal_value};
    }
    constexpr double largest = std::numeric_limits<double>::max();
    return round_half_even(number_of(parameter, {-largest, largest, 0.0})) != 0.0;
}

std::size_t choice_of(const Parameter& parameter, std::span<const std::string_view> choices) {
    of_kind(parameter, Parameter::Kind::word);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        if (is_form_of(parameter.text, choices[i])) {
            return i;
        }
    }
    throw Refused{ScpiError::illegal_value};
}

const std::string& text_of(const Parameter& parameter) {
    return of_kind(parameter, Parameter::Kind::text).text;
}

const std::string& block_of(const Parameter& parameter) {
    return of_kind(parameter, Parameter::Kind::block).text;
}

} // namespace kv408
