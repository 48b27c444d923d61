#include <array>
#include <charconv>
#include <cstdio>

#include "display/settings_dialog.h"
#include "measure/measurement_rows.h"
#include "remote/choices.h"
#include "remote/panel_settings.h"
#include "remote/replies.h"
#include "remote/tree.h"
#include "scope/parts.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 7> coloured{"CH1",  "CH2",         "BACKground", "TEXT",
                                                   "GRID", "TBACkground", "ANNotation"};

/// The colour of the item with the index `item` in the list of choices.
Colour& colour_of(ColourTable& table, std::size_t item) {
    constexpr std::array members{&ColourTable::ch1,        &ColourTable::ch2,
                                 &ColourTable::background, &ColourTable::normal_text,
                                 &ColourTable::grid,       &ColourTable::text_background,
                                 &ColourTable::annotations};
    return table.*members.at(item);
}

/// The colour that `text` says in the form "#RRGGBB". Throws `Refused` for any other text.
Colour colour_in(const std::string& text) {
    constexpr std::size_t length = 7;
    constexpr int base = 16;
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    if (text.size() != length || text.front() != '#') {
        throw Refused{ScpiError::illegal_value};
    }
    const auto read = std::from_chars(text.data() + 1, end, value, base);
    if (read.ec != std::errc{} || read.ptr != end) {
        throw Refused{ScpiError::illegal_value};
    }
    return rgb(static_cast<std::uint8_t>(value >> 16U), static_cast<std::uint8_t>(value >> 8U),
               static_cast<std::uint8_t>(value));
}

std::string colour_text(Colour colour) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", red_of(colour), green_of(colour),
                  blue_of(colour));
    return text.data();
}

Command colour_command(Instrument& instrument) {
    return {"DISPlay:COLor",
            [&instrument](const Call& call) {
                const std::size_t item = choice_of(call.parameters[0], coloured);
                const Colour colour = colour_in(text_of(call.parameters[1]));
                instrument.act(call.client, [&](Scope& scope) {
                    ColourTable table = scope.settings_dialog().confirmed_colours();
                    colour_of(table, item) = colour;
                    scope.settings_dialog().set_colours(table);
                });
            },
            {2, 2},
            [&instrument](const Call& call) {
                const std::size_t item = choice_of(call.parameters[0], coloured);
                ColourTable table = instrument.parts().colours;
                return string_reply(colour_text(colour_of(table, item)));
            },
            {1, 1},
            choices_text(coloured) + " and `\"#RRGGBB\"`"};
}

Command depth_command(Instrument& instrument) {
    const DisplaySettings factory;
    NumberSetting setting{{0, 9, static_cast<double>(factory.persisttime)}, {}, {}};
    setting.set = [&instrument](const Call& call, double depth) {
        instrument.act(call.client, [depth](Scope& scope) {
            scope.settings_dialog().set_persistence_depth(round_to_int32(depth));
        });
    };
    setting.get = [&instrument](const Call&) {
        return static_cast<double>(instrument.parts().settings.persisttime);
    };
    return whole_setting("DISPlay:PERSistence:DEPTh", setting);
}

/// The slot that the header names.
MeasurementControls& slot_of(FrontPanel& panel, const Call& call) {
    return panel.measurement.at(static_cast<std::size_t>(call.suffixes.front() - 1));
}

/// The number of the slot that is marked, 0 for none.
int marked_slot(const FrontPanel& panel) {
    for (std::size_t slot = panel.measurement.size(); slot > 0; --slot) {
        if (panel.measurement.at(slot - 1).annotate.checked()) {
            return static_cast<int>(slot);
        }
    }
    return 0;
}

Command annotate_command(Instrument& instrument) {
    NumberSetting setting{{0, 3, 0}, {}, {}};
    setting.set = [&instrument](const Call& call, double number) {
        const int wanted = round_to_int32(number);
        instrument.act(call.client, [wanted](Scope& scope) {
            FrontPanel& panel = scope.panel();
            for (std::size_t slot = 0; slot < panel.measurement.size(); ++slot) {
                CheckBox& box = panel.measurement.at(slot).annotate;
                const bool marked = static_cast<int>(slot) + 1 == wanted;
                if (box.checked() != marked) {
                    box.press(marked);
                }
            }
        });
    };
    setting.get = [&instrument](const Call&) {
        return static_cast<double>(marked_slot(instrument.parts().panel));
    };
    return whole_setting("MEASure:ANNotate", setting);
}

} // namespace

std::vector<Command> display_commands(Instrument& instrument) {
    const PanelSettings settings(instrument);
    const ControlOf<ListBox> slot = [](FrontPanel& panel, const Call& call) -> ListBox& {
        return slot_of(panel, call).selector;
    };
    return {
        settings.check("DISPlay:GRID", control(&FrontPanel::gridenable)),
        settings.check("DISPlay:DOTS", control(&FrontPanel::eyeon)),
        settings.check("DISPlay:PERSistence", control(&FrontPanel::persist)),
        depth_command(instrument),
        colour_command(instrument),
        settings.check("MEASure:STATe", control(&FrontPanel::check1)),
        settings.choice("MEASure:SLOT<1-3>", slot, slot_choices),
        annotate_command(instrument),
    };
}

} // namespace kv408
