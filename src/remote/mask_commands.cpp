#include <array>
#include <string>

#include "remote/choices.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"

namespace kv408 {
namespace {

/// The shipped masks, then the one that the user has loaded.
constexpr std::array<std::string_view, 7> mask_choices{"HEX40",    "HEX60", "DIAMond", "STM1",
                                                       "TENGbase", "PULSe", "OWN"};
static_assert(mask_choices.size() == shipped_masks.size() + 1);

constexpr std::array<std::string_view, 4> action_choices{"NONE", "BEEP", "STOP", "SNAPshot"};
constexpr std::array<std::string_view, 3> verdict_replies{"PASS", "FAIL", "NONE"};

Command name_command(Instrument& instrument) {
    return choice_setting(
        "MASK:NAME", mask_choices,
        [&instrument](const Call& call, std::size_t index) {
            instrument.act(call.client, [index](Scope& scope) {
                MaskDialog& dialog = scope.tools().mask();
                if (index == shipped_masks.size() && !dialog.has_loaded()) {
                    throw Refused{ScpiError::settings_conflict, "No mask has been loaded"};
                }
                dialog.controls().cmbMask.set_index(static_cast<int>(index));
            });
        },
        [&instrument](const Call&) {
            return static_cast<std::size_t>(
                instrument.scope().tools().mask().controls().cmbMask.index());
        });
}

/// What there is to be told; throws `Refused` where nothing can be tested.
std::string mask_data(MaskDialog& dialog) {
    const MaskTest test = dialog.test();
    if (test.values.empty()) {
        throw Refused{ScpiError::data_stale, test.found};
    }
    return values_reply(test.values);
}

} // namespace

std::vector<Command> mask_commands(Instrument& instrument) {
    using Controls = MaskControls;
    const ToolCommands<MaskDialog> window(instrument, &Tools::mask);
    constexpr NumberRange ratio{0.0, 1.0, 0.0};
    return {
        window.state("MASK:STATe"),
        window.list("MASK:SOURce", channel_choices, &Controls::cmbMaskChannel),
        name_command(instrument),
        window.type_real("MASK:RATio",
                         {ratio, &Controls::txtMaskRatio,
                          [](const MaskDialog& dialog) { return dialog.ratio().value_or(0.0); },
                          false}),
        window.automatic("MASK:RATio:AUTO", &Controls::txtMaskRatio),
        window.list("MASK:ACTion", action_choices, &Controls::cmbMaskAction),
        query_command("MASK:VERDict",
                      [window](const Call&) {
                          const auto verdict = window.dialog().test().verdict;
                          return std::string(verdict_replies.at(static_cast<std::size_t>(verdict)));
                      }),
        query_command("MASK:FOUNd",
                      [window](const Call&) { return string_reply(window.dialog().test().found); }),
        query_command("MASK:DATA", [window](const Call&) { return mask_data(window.dialog()); }),
    };
}

} // namespace kv408
