#include "remote/setting_commands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <utility>

#include "remote/replies.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr ParameterCount one{1, 1};

NumberRange range_of(const NumberSetting& setting, const Call& call) {
    return setting.range_now ? setting.range_now(call) : setting.range;
}

// What a numeric query answers: the setting, or one of its limits.
double asked_number(const NumberSetting& setting, const Call& call) {
    return call.parameters.empty() ? setting.get(call)
                                   : limit_of(call.parameters.front(), range_of(setting, call));
}

// A client may write a step with rounded digits: a step this near is the one that is meant.
bool is_step(double number, double step) {
    constexpr double nearness = 1e-9;
    return std::abs(number - step) <= nearness * step;
}

// "20 ns", "−4": without a prefix that people do not use.
std::string number_text(double value, Quantity quantity) {
    constexpr std::array<std::string_view, 5> scale_prefixes{"", "m", "u", "n", "p"};
    constexpr double thousand = 1000.0;
    constexpr double nearly_one = 1 - 1e-9;
    std::size_t prefix = 0;
    std::string_view unit;
    switch (quantity) {
    case Quantity::volts:
        unit = "V";
        break;
    case Quantity::seconds:
        unit = "s";
        break;
    case Quantity::hertz:
        unit = "Hz";
        break;
    case Quantity::microseconds:
        unit = "us";
        break;
    case Quantity::number:
        break;
    }
    double number = std::abs(value);
    if (quantity == Quantity::volts || quantity == Quantity::seconds) {
        while (number > 0 && number < nearly_one && prefix + 1 < scale_prefixes.size()) {
            number *= thousand;
            ++prefix;
        }
    }
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.10g", number);
    std::string text = value < 0 ? "−" : "";
    text += digits.data();
    if (!unit.empty()) {
        text.append(" ").append(scale_prefixes.at(prefix)).append(unit);
    }
    return text;
}

std::string ends_text(const NumberRange& range) {
    return number_text(range.least, range.quantity) + " to " +
           number_text(range.most, range.quantity);
}

std::string preset_text(const NumberRange& range) {
    return ", at first " + number_text(range.preset, range.quantity);
}

std::string value_text(const NumberSetting& setting) {
    return setting.range_now ? setting.told : range_text(setting.range);
}

} // namespace

std::string range_text(const NumberRange& range) {
    return ends_text(range) + preset_text(range);
}

std::string choices_text(std::span<const std::string_view> choices) {
    std::string text;
    for (const std::string_view choice : choices) {
        text.append(text.empty() ? "`" : ", `").append(choice).append("`");
    }
    return text;
}

Command query_command(std::string header, Command::Answer answer) {
    Command command{std::move(header)};
    command.answer = std::move(answer);
    return command;
}

Command real_setting(std::string header, const NumberSetting& setting) {
    Command command{std::move(header), {}, one, {}, {0, 1}};
    command.act = [setting](const Call& call) {
        setting.set(call, number_of(call.parameters.front(), range_of(setting, call)));
    };
    command.answer = [setting](const Call& call) {
        return real_reply(asked_number(setting, call));
    };
    command.value = value_text(setting);
    return command;
}

Command whole_setting(std::string header, const NumberSetting& setting) {
    Command command{std::move(header), {}, one, {}, {0, 1}};
    command.act = [setting](const Call& call) {
        setting.set(call, whole_of(call.parameters.front(), range_of(setting, call)));
    };
    command.answer = [setting](const Call& call) {
        return whole_reply(round_to_int32(asked_number(setting, call)));
    };
    command.value = value_text(setting);
    return command;
}

Command step_setting(std::string header, const StepSetting& setting) {
    const auto [least, most] = std::minmax_element(setting.steps.begin(), setting.steps.end());
    const NumberRange range{*least, *most, setting.steps.at(setting.preset), setting.quantity};
    Command command{std::move(header), {}, one, {}, {0, 1}};
    command.act = [setting, range](const Call& call) {
        const double number = any_number_of(call.parameters.front(), range);
        const auto step = std::find_if(setting.steps.begin(), setting.steps.end(),
                                       [number](double each) { return is_step(number, each); });
        if (step == setting.steps.end()) {
            throw Refused{ScpiError::data_out_of_range};
        }
        setting.set(call, static_cast<std::size_t>(step - setting.steps.begin()));
    };
    command.answer = [setting, range](const Call& call) {
        return real_reply(call.parameters.empty() ? setting.steps.at(setting.get(call))
                                                  : limit_of(call.parameters.front(), range));
    };
    command.value = ends_text(range) + " in " + std::to_string(setting.steps.size()) + " steps" +
                    preset_text(range);
    return command;
}

Command boolean_setting(std::string header, std::function<void(const Call&, bool)> set,
                        std::function<bool(const Call&)> get) {
    Command command{std::move(header), {}, one, {}, {}};
    command.act = [set = std::move(set)](const Call& call) {
        set(call, boolean_of(call.parameters.front()));
    };
    command.answer = [get = std::move(get)](const Call& call) { return boolean_reply(get(call)); };
    command.value = "boolean";
    return command;
}

Command choice_setting(std::string header, std::span<const std::string_view> choices,
                       std::function<void(const Call&, std::size_t)> set,
                       std::function<std::size_t(const Call&)> get) {
    Command command{std::move(header), {}, one, {}, {}};
    command.act = [set = std::move(set), choices](const Call& call) {
        set(call, choice_of(call.parameters.front(), choices));
    };
    command.answer = [get = std::move(get), choices](const Call& call) {
        return short_form(choices[get(call)]);
    };
    command.value = choices_text(choices);
    return command;
}

} // namespace kv408
