#include "export/quantity_text.h"

#include <array>
#include <cmath>
#include <utility>

#include "state/engineering_format.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

struct PrefixLetter {
    char letter;
    double worth;
};

constexpr std::array<PrefixLetter, 9> prefix_letters = {{{'f', 1e-15},
                                                         {'p', 1e-12},
                                                         {'n', 1e-9},
                                                         {'u', 1e-6},
                                                         {'m', 1e-3},
                                                         {'k', 1e3},
                                                         {'M', 1e6},
                                                         {'G', 1e9},
                                                         {'T', 1e12}}};

std::string_view without_blanks_at_the_end(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// `value` with its prefix. What lies beyond those of the panel's numbers is written as a thousand
/// times more or less, with the prefix of that in place of theirs.
std::string with_prefix(double value, int digits) {
    constexpr double thousand = 1e3;
    constexpr double least = 1e-12;
    constexpr double most = 1e12;
    if (value != 0.0 && std::fabs(value) < least) {
        std::string text = engformat(value * thousand, digits);
        if (text.back() == 'p') {
            text.back() = 'f';
        }
        return text;
    }
    std::string text = engformat(std::fabs(value) < most ? value : value / thousand, digits);
    if (std::fabs(value) >= most && text.back() == 'G') {
        text.back() = 'T';
    }
    return text;
}

std::string with_unit(std::string text, std::string_view unit) {
    if (unit.find('^') != std::string_view::npos) {
        text += ' ';
    }
    return text.append(unit);
}

} // namespace

std::string quantity_text(double value, std::string_view unit, int digits) {
    return with_unit(with_prefix(value, digits), unit);
}

std::string scale_text(double value, std::string_view unit) {
    constexpr int scale_digits = 3;
    std::string text = with_prefix(value, scale_digits);
    if (const auto point = text.find('.'); point != std::string::npos) {
        const auto end = text.find_last_of("0123456789") + 1;
        auto last = text.find_last_not_of('0', end - 1);
        last = last == point ? point : last + 1;
        text.erase(last, end - last);
    }
    return with_unit(std::move(text), unit);
}

std::optional<double> quantity_typed(std::string_view text, std::string_view unit) {
    text = without_blanks_at_the_end(text);
    if (text.ends_with(unit)) {
        text = without_blanks_at_the_end(text.substr(0, text.size() - unit.size()));
    }
    double worth = 1.0;
    for (const PrefixLetter& prefix : prefix_letters) {
        if (text.ends_with(prefix.letter)) {
            worth = prefix.worth;
            text = text.substr(0, text.size() - 1);
            break;
        }
    }
    const auto number = entire_number(text);
    return number ? std::optional(*number * worth) : std::nullopt;
}

} // namespace kv408
