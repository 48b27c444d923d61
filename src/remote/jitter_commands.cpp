#include <array>
#include <string>

#include "remote/choices.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 3> edge_choices{"ANY", "RISing", "FALLing"};

std::string bathtub_reply(const JitterDialog& dialog) {
    const auto jitter = dialog.jitter();
    const auto curve = jitter ? bathtub(*jitter, JitterDialog::bathtub_steps)
                              : Told<std::vector<double>>(jitter.why());
    if (!curve) {
        throw Refused{ScpiError::data_stale, std::string(text_of(curve.why()))};
    }
    std::string answer;
    for (const double ratio : *curve) {
        add_item(answer, real_reply(ratio));
    }
    return answer;
}

} // namespace

std::vector<Command> jitter_commands(Instrument& instrument) {
    using Controls = JitterControls;
    const ToolCommands<JitterDialog> window(instrument, &Tools::jitter);
    constexpr NumberRange number{0.0, 1000.0, 0.0};
    constexpr NumberRange level{-1000.0, 1000.0, 0.0, Quantity::volts};
    constexpr NumberRange time{0.0, 1.0, 0.0, Quantity::seconds};
    return {
        window.state("JITTer:STATe"),
        window.list("JITTer:SOURce", channel_choices, &Controls::cmbJitterChannel),
        window.list("JITTer:EDGE", edge_choices, &Controls::cmbJitterEdge),
        window.type("JITTer:NUMBer",
                    {number, &Controls::txtJitterNumber,
                     [](const JitterDialog& dialog) { return dialog.setup().number.value_or(0); }}),
        window.type("JITTer:LEVel", {level, &Controls::txtJitterLevel,
                                     [](const JitterDialog& dialog) {
                                         return dialog.setup().level.value_or(0.0) /
                                                millivolts_per_volt;
                                     },
                                     false}),
        window.automatic("JITTer:LEVel:AUTO", &Controls::txtJitterLevel),
        window.type("JITTer:INSTrument", {time, &Controls::txtJitterOwn,
                                          [](const JitterDialog& dialog) {
                                              return dialog.setup().instrument_ps /
                                                     picoseconds_per_second;
                                          }}),
        window.type("JITTer:INTerval", {time, &Controls::txtJitterInterval,
                                        [](const JitterDialog& dialog) {
                                            return dialog.setup().interval.value_or(0.0) /
                                                   picoseconds_per_second;
                                        }}),
        window.values("JITTer:DATA"),
        window.reasons("JITTer:REASons"),
        query_command("JITTer:BATHtub",
                      [window](const Call&) { return bathtub_reply(window.dialog()); }),
    };
}

} // namespace kv408
