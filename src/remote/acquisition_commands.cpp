#include <array>

#include "config/set_up.h"
#include "config/settings_file.h"
#include "remote/panel_settings.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tree.h"
#include "scope/parts.h"
#include "scope/tool_settings.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 2> types{"NORMal", "AVERage"};

std::string identity(const Instrument& instrument) {
    const std::string serial =
        instrument.attached() ? instrument.parts().panel.device.text() : std::string();
    return "Tarvo,Kv408," + (serial.empty() ? "0" : serial) + ',' + KV408_VERSION;
}

const char* state_of(const AcquisitionState& acquisition) {
    const std::string& word = acquisition.scopestate;
    if (word == state_word::stopped) {
        return "STOP";
    }
    if (word == state_word::nothing || word == state_word::begin) {
        return "IDLE";
    }
    if (word == state_word::set_up || word == state_word::changes || word == state_word::changes1) {
        return "SET";
    }
    return acquisition.activity == Activity::waiting_for_trigger ? "TRIG" : "RUN";
}

void reset(Instrument& instrument, Client& client) {
    client.tell_completion(false);
    instrument.stop_and_act(client, [&instrument](Scope& scope) {
        SettingsFile& settings = scope.settings_file();
        settings.put_back(set_up_of(FrontPanel(), settings.factory_bytes()));
        set_tools(scope.tools(), *instrument.tools_at_first());
    });
    instrument.forget_single();
}

void run(Instrument& instrument, Client& client) {
    instrument.act(client, [](Scope& scope) { scope.panel().cmdstartsweep.click(); });
    instrument.note_run(client);
}

void stop(Instrument& instrument, Client& client) {
    instrument.stop_and_act(client, [](const Scope&) {});
    instrument.forget_single();
}

// "Filter Avg." has two headers.
Command type_command(Instrument& instrument) {
    return choice_setting(
        "ACQuire:TYPE", types,
        [&instrument](const Call& call, std::size_t type) {
            instrument.act(call.client, [type](Scope& scope) {
                CheckBox& box = scope.panel().average;
                if (box.checked() != (type == 1)) {
                    box.press(type == 1);
                }
            });
        },
        [&instrument](const Call&) {
            return instrument.parts().panel.average.checked() ? std::size_t{1} : std::size_t{0};
        });
}

bool works(const Instrument& instrument) {
    return instrument.attached() && !instrument.silent();
}

} // namespace

std::vector<Command> acquisition_commands(Instrument& instrument) {
    const auto single = [&instrument](const Call& call) { instrument.single(call.client); };
    return {
        query_command("*IDN", [&instrument](const Call&) { return identity(instrument); }),
        {"*RST", [&instrument](const Call& call) { reset(instrument, call.client); }},
        {"*TRG", single},
        query_command(
            "*TST", [&instrument](const Call&) { return whole_reply(works(instrument) ? 0 : 1); }),
        {"RUN", [&instrument](const Call& call) { run(instrument, call.client); }},
        {"STOP", [&instrument](const Call& call) { stop(instrument, call.client); }},
        {"SINGle", single},
        {"DIGitize",
         [&instrument](const Call& call) {
             instrument.single(call.client);
             call.client.hold(Client::Hold::wait);
         }},
        query_command("ACQuire:STATe",
                      [&instrument](const Call&) {
                          return std::string(state_of(instrument.parts().acquisition));
                      }),
        type_command(instrument),
        PanelSettings(instrument).check("ACQuire:SPEed", control(&FrontPanel::adcspeed)),
        query_command("ACQuire:COUNt",
                      [&instrument](const Call&) {
                          return whole_reply(static_cast<std::int64_t>(instrument.sweep_count()));
                      }),
    };
}

} // namespace kv408
