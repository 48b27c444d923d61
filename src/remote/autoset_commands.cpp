#include "autoset/autoset.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tree.h"
#include "scope/parts.h"

namespace kv408 {

std::vector<Command> autoset_commands(Instrument& instrument) {
    return {
        {"AUToset",
         [&instrument](const Call& call) {
             instrument.act(call.client,
                            [](Scope& scope) { scope.autoset().controls().mnuautoset.click(); });
         }},
        {"AUToset:CANCel",
         [&instrument](const Call& call) { instrument.cancel_autoset(call.client); }},
        query_command(
            "AUToset:RESult",
            [&instrument](const Call&) { return string_reply(instrument.parts().autoset.line()); }),
    };
}

} // namespace kv408
