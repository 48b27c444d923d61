#include "remote/tool_commands.h"

#include <limits>

#include "state/engineering_format.h"

namespace kv408 {

std::string values_reply(std::span<const ToldValue> values) {
    std::string answer;
    for (const ToldValue& told : values) {
        add_item(answer,
                 real_reply(told.value ? *told.value : std::numeric_limits<double>::quiet_NaN()));
    }
    return answer;
}

std::string reasons_reply(std::span<const ToldValue> values) {
    std::string answer;
    for (const ToldValue& told : values) {
        add_item(answer, string_reply(told.value ? "" : text_of(told.value.why())));
    }
    return answer;
}

std::string typed_number(double value) {
    const std::string printed = printed_number(value);
    return printed.substr(printed.find_first_not_of(' '));
}

} // namespace kv408
