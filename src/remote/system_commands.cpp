#include <array>

#include "config/settings_file.h"
#include "display/snapshot.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tree.h"
#include "scope/parts.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> picture_kinds{"PNG", "BMP"};

void load_set_up(Instrument& instrument, const Call& call) {
    const std::string bytes = block_of(call.parameters.front());
    int bad_line = 0;
    instrument.act(call.client,
                   [&](Scope& scope) { bad_line = scope.settings_file().load_bytes(bytes); });
    if (bad_line > 0) {
        throw Refused{ScpiError::invalid_block, "Line " + std::to_string(bad_line)};
    }
}

std::string picture(Instrument& instrument, const Call& call) {
    const bool png = choice_of(call.parameters.front(), picture_kinds) == 0;
    Snapshot& snapshot = instrument.scope().snapshot();
    const std::string bytes = png ? snapshot.png() : snapshot.bitmap();
    if (bytes.empty()) {
        throw Refused{ScpiError::hardware_error, "The picture could not be encoded"};
    }
    return block_reply(bytes);
}

std::string record(Instrument& instrument) {
    std::string answer;
    for (const std::int32_t value : instrument.parts().calibration) {
        add_item(answer, whole_reply(value));
    }
    return answer;
}

} // namespace

std::vector<Command> system_commands(Instrument& instrument) {
    Command picture_query{"HCOPy:SDUMp:DATA"};
    picture_query.answer = [&instrument](const Call& call) { return picture(instrument, call); };
    picture_query.query_takes = {1, 1};
    return {
        {"SYSTem:SETup",
         [&instrument](const Call& call) { load_set_up(instrument, call); },
         {1, 1},
         [&instrument](const Call&) {
             return block_reply(instrument.scope().settings_file().bytes());
         }},
        boolean_setting(
            "SYSTem:LOCK",
            [&instrument](const Call& call, bool lock) {
                instrument.lock_panel(call.client, lock);
            },
            [&instrument](const Call&) { return instrument.panel_locked(); }),
        picture_query,
        query_command("CALibration:RECord",
                      [&instrument](const Call&) { return record(instrument); }),
    };
}

} // namespace kv408
