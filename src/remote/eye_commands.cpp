#include "remote/choices.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"
#include "state/units.h"

namespace kv408 {

std::vector<Command> eye_commands(Instrument& instrument) {
    using Controls = EyeControls;
    const ToolCommands<EyeDialog> window(instrument, &Tools::eye);
    constexpr NumberRange interval{0.0, 1.0, 0.0, Quantity::seconds};
    constexpr NumberRange time{-1.0, 1.0, 0.0, Quantity::seconds};
    return {
        window.state("EYE:STATe"),
        window.list("EYE:SOURce", channel_choices, &Controls::cmbEyeChannel),
        window.type("EYE:INTerval", {interval, &Controls::txtEyeInterval,
                                     [](const EyeDialog& dialog) {
                                         return dialog.setup().interval.value_or(0.0) /
                                                picoseconds_per_second;
                                     }}),
        window.type("EYE:CROSsing", {time, &Controls::txtEyeCrossing,
                                     [](const EyeDialog& dialog) {
                                         return dialog.setup().crossing.value_or(0.0) /
                                                picoseconds_per_second;
                                     },
                                     false}),
        window.automatic("EYE:CROSsing:AUTO", &Controls::txtEyeCrossing),
        window.values("EYE:DATA"),
        window.reasons("EYE:REASons"),
    };
}

} // namespace kv408
