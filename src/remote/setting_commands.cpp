#include "remote/setting_commands.h"

#include <utility>

#include "remote/replies.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr ParameterCount one{1, 1};

// What a numeric query answers: the setting, or one of its limits.
double asked_number(const NumberSetting& setting, const Call& call) {
    return call.parameters.empty() ? setting.get(call)
                                   : limit_of(call.parameters.front(), setting.range);
}

} // namespace

Command real_setting(std::string header, const NumberSetting& setting) {
    Command command{std::move(header), {}, one, {}, {0, 1}};
    command.act = [setting](const Call& call) {
        setting.set(call, number_of(call.parameters.front(), setting.range));
    };
    command.answer = [setting](const Call& call) {
        return real_reply(asked_number(setting, call));
    };
    return command;
}

Command whole_setting(std::string header, const NumberSetting& setting) {
    Command command{std::move(header), {}, one, {}, {0, 1}};
    command.act = [setting](const Call& call) {
        setting.set(call, whole_of(call.parameters.front(), setting.range));
    };
    command.answer = [setting](const Call& call) {
        return whole_reply(round_to_int32(asked_number(setting, call)));
    };
    return command;
}

Command boolean_setting(std::string header, std::function<void(const Call&, bool)> set,
                        std::function<bool(const Call&)> get) {
    Command command{std::move(header), {}, one, {}, {}};
    command.act = [set = std::move(set)](const Call& call) {
        set(call, boolean_of(call.parameters.front()));
    };
    command.answer = [get = std::move(get)](const Call& call) { return boolean_reply(get(call)); };
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
    return command;
}

} // namespace kv408
