#include "export/told_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "export/number_text.h"
#include "state/engineering_format.h"
#include "state/units.h"

namespace kv408 {
namespace {

/// Behind a number without a prefix.
std::string_view unit_of(ToldUnit unit) {
    switch (unit) {
    case ToldUnit::volts:
        return "V";
    case ToldUnit::seconds:
        return "s";
    case ToldUnit::volts_per_second:
        return "V/s";
    case ToldUnit::percent:
        return "%";
    case ToldUnit::decibels:
        return "dB";
    case ToldUnit::hits:
    case ToldUnit::ratio:
    case ToldUnit::share:
        break;
    }
    return "";
}

} // namespace

std::string told_text(double value, ToldUnit unit) {
    constexpr int digits = 5;
    constexpr double least_engineering = 1e-12;
    constexpr double femto_per_one = 1e15;
    if (unit == ToldUnit::hits) {
        return std::to_string(std::llround(value));
    }
    if (unit == ToldUnit::share) {
        constexpr int share_digits = 4;
        std::array<char, 32> text = {};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::general, share_digits);
        return {text.data(), end.ptr};
    }
    std::string text;
    if (unit == ToldUnit::percent || unit == ToldUnit::decibels) {
        text = plain_text(value, digits) + ' ';
    } else if (unit == ToldUnit::seconds && value != 0.0 && std::fabs(value) < least_engineering) {
        text = engformat(value * femto_per_one, digits).append("f");
    } else {
        text = engformat(value, digits);
    }
    return text.append(unit_of(unit));
}

std::string told_names(std::span<const ToldValue> values) {
    std::string names;
    for (const ToldValue& told : values) {
        names.append(names.empty() ? "" : "\n").append(told.name);
    }
    return names;
}

std::string told_texts(std::span<const ToldValue> values) {
    const bool any = std::any_of(values.begin(), values.end(),
                                 [](const ToldValue& told) { return bool(told.value); });
    std::string texts;
    for (const ToldValue& told : values) {
        texts.append(texts.empty() ? "" : "\n");
        if (!told.value) {
            texts.append(any ? text_of(told.value.why()) : "-");
            continue;
        }
        texts.append(told_text(*told.value, told.unit));
        if (!told.remark.empty()) {
            texts.append(" (").append(told.remark).append(")");
        }
    }
    return texts;
}

std::string told_table(std::span<const ToldValue> values, std::string_view channel) {
    std::string text = "Value\t";
    text.append(channel).append("\tUnit\tRemark\n");
    for (const ToldValue& told : values) {
        text.append(told.name).append("\t");
        text.append(told.value ? number_text(*told.value) : "").append("\t");
        text.append(unit_of(told.unit)).append("\t");
        text.append(told.value ? told.remark : text_of(told.value.why())).append("\n");
    }
    return text;
}

} // namespace kv408
