#include "config/setting_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>

#include "panel/delay_text.h"
#include "state/engineering_format.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"

namespace kv408 {
namespace {

using Rows = std::vector<SettingRow>;
using Values = std::vector<std::string>;

constexpr std::int16_t last_row = plot::height - 1;
constexpr std::int16_t last_column = plot::width - 1;
/// The adjust wheel's end in level codes.
constexpr std::int16_t highest_level = plot::wheel_span * codes_per_wheel_step;
constexpr std::uint32_t colour_bits = 0xFFFFFF;

/// `text` as a line of the file can hold it, and as it comes back: control characters, which would
/// part or end its fields, count as the spaces around a value do.
std::string on_one_line(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char character) { return character >= 0 && character < ' '; },
        ' ');
    line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

/// The integer part of the number that the whole of `text` is, when it lies within
/// `lowest`..`highest`.
std::optional<int> integer_part(std::string_view text, int lowest, int highest) {
    const double number = std::trunc(whole_number_text(text).value_or(lowest - 1));
    if (number < lowest || number > highest) {
        return std::nullopt;
    }
    return round_to_int32(number);
}

/// A 16-bit number that is only stored, held within `lowest`..`highest`.
SettingRow stored(std::string_view key, std::int16_t& place, std::int16_t lowest,
                  std::int16_t highest) {
    return {.key = key,
            .write = [&place] { return Values{printed_field(place)}; },
            .read =
                [&place, lowest, highest](std::string_view value) {
                    const auto number = int16_in(value);
                    if (number) {
                        place = std::clamp(*number, lowest, highest);
                    }
                    return number.has_value();
                }};
}

/// The selected entry of a list.
SettingRow list_index(std::string_view key, ListBox& list) {
    return {.key = key,
            .write = [&list] { return Values{printed_field(list.index())}; },
            .read =
                [&list](std::string_view value) {
                    const auto index = int16_in(value);
                    if (!index || *index < 0 || !list.has_index(*index)) {
                        return false;
                    }
                    list.set_index(*index);
                    return true;
                }};
}

/// 0 or 1, whatever type of number stands for it.
template <typename Integer>
std::optional<bool> yes_or_no(const std::optional<Integer>& number) {
    return number && (*number == 0 || *number == 1) ? std::optional(*number == 1) : std::nullopt;
}

/// A check box.
SettingRow check_box(std::string_view key, CheckBox& box) {
    return {.key = key,
            .write = [&box] { return Values{printed_field(box.checked() ? 1 : 0)}; },
            .read =
                [&box](std::string_view value) {
                    const auto checked = yes_or_no(int16_in(value));
                    if (checked) {
                        box.set_checked(*checked);
                    }
                    return checked.has_value();
                }};
}

/// An option that is 0 or 1 and that no control of the panel shows.
SettingRow option(std::string_view key, std::int32_t& place) {
    return {.key = key,
            .write = [&place] { return Values{printed_field(place)}; },
            .read =
                [&place](std::string_view value) {
                    const auto chosen = yes_or_no(int32_in(value));
                    if (chosen) {
                        place = *chosen ? 1 : 0;
                    }
                    return chosen.has_value();
                }};
}

SettingRow colour(std::string_view key, Colour& place) {
    return {.key = key,
            .write =
                [&place] {
                    return Values{
                        printed_field(static_cast<std::int32_t>(place.value & colour_bits))};
                },
            .read =
                [&place](std::string_view value) {
                    const auto number = int32_in(value);
                    if (number) {
                        place.value = static_cast<std::uint32_t>(*number) & colour_bits;
                    }
                    return number.has_value();
                }};
}

/// The wheel value of a channel's vertical position.
SettingRow position(std::string_view key, const KeptSettings& kept, int channel) {
    return {.key = key,
            .write =
                [&kept, channel] {
                    return Values{printed_field(
                        kept.channels[static_cast<std::size_t>(channel)].marker_wheel)};
                },
            .read =
                [&kept, channel](std::string_view value) {
                    const auto number = int32_in(value);
                    if (number) {
                        kept.adjust.move_channel(channel, std::clamp(*number, 0, plot::wheel_span));
                    }
                    return number.has_value();
                }};
}

/// The text of a channel's delay box, in picoseconds.
SettingRow delay(std::string_view key, const KeptSettings& kept, int channel) {
    return {.key = key,
            .write =
                [&kept, channel] {
                    const auto index = static_cast<std::size_t>(channel);
                    return Values{on_one_line(
                        delay_text(kept.panel.channel[index].psofset, kept.channels[index]))};
                },
            .read =
                [&kept, channel](std::string_view value) {
                    kept.adjust.restore_delay(channel, value);
                    return true;
                }};
}

/// The selected tab of the cursor strip, by its position.
SettingRow cursor_type(std::string_view key, TabStrip& strip) {
    return {.key = key,
            .write = [&strip] { return Values{printed_field(strip.selected())}; },
            .read =
                [&strip](std::string_view value) {
                    const auto tab = integer_part(value, 1, static_cast<int>(strip.tabs().size()));
                    if (tab) {
                        strip.select(*tab);
                    }
                    return tab.has_value();
                }};
}

/// The selected adjust target, by its key; one that the strip does not have is passed over.
SettingRow adjust_target(std::string_view key, const KeptSettings& kept) {
    return {.key = key,
            .write = [&kept] { return Values{kept.panel.tabstrip2.selected_key()}; },
            .read =
                [&kept](std::string_view value) {
                    kept.adjust.select_target(value);
                    return true;
                }};
}

/// The numbers of the checked annotation boxes.
Values checked_annotations(const FrontPanel& panel) {
    Values values;
    for (std::size_t slot = 0; slot < panel.measurement.size(); ++slot) {
        if (panel.measurement[slot].annotate.checked()) {
            values.push_back(printed_field(static_cast<std::int32_t>(slot)));
        }
    }
    return values;
}

/// The checked annotation boxes, a line each.
SettingRow annotations(std::string_view key, const KeptSettings& kept) {
    return {.key = key,
            .write = [&kept] { return checked_annotations(kept.panel); },
            .read =
                [&kept](std::string_view value) {
                    auto& slots = kept.panel.measurement;
                    const auto slot = integer_part(value, 0, static_cast<int>(slots.size()) - 1);
                    if (!slot) {
                        return false;
                    }
                    slots[static_cast<std::size_t>(*slot)].annotate.put_checked(true);
                    std::array<bool, 3> checked = {};
                    std::transform(slots.begin(), slots.end(), checked.begin(),
                                   [](const auto& row) { return row.annotate.checked(); });
                    if (kept.chkMeasAnno_MouseDown) {
                        kept.chkMeasAnno_MouseDown(*slot);
                    }
                    // The handler unchecks the other boxes; each line of the file leaves its own
                    // checked.
                    for (std::size_t index = 0; index < slots.size(); ++index) {
                        slots[index].annotate.put_checked(checked[index]);
                    }
                    return true;
                }};
}

SettingRow folder(std::string_view key, std::string& place) {
    return {.key = key,
            .write = [&place] { return Values{on_one_line(place)}; },
            .read =
                [&place](std::string_view value) {
                    place = on_one_line(value);
                    return true;
                }};
}

void add(Rows& rows, Rows more) {
    std::move(more.begin(), more.end(), std::back_inserter(rows));
}

Rows cursor_and_trigger_rows(const KeptSettings& kept) {
    FrontPanel& panel = kept.panel;
    return {
        stored("intcr1vpos", kept.cursors.vpos[0], 0, last_row),
        stored("intcr1hpos", kept.cursors.hpos[0], 0, last_column),
        stored("intcr2vpos", kept.cursors.vpos[1], 0, last_row),
        stored("intcr2hpos", kept.cursors.hpos[1], 0, last_column),
        list_index("cursorselect", panel.combocursorselect),
        cursor_type("TabStrip3", panel.tabstrip3),
        stored("trigpos1", kept.trigger.saved_trigpos[0], 0, highest_level),
        stored("trigpos2", kept.trigger.saved_trigpos[1], 0, highest_level),
        stored("hyst1", kept.trigger.hyst[0], 0, static_cast<std::int16_t>(panel.shyst.maximum())),
        stored("hyst2", kept.trigger.hyst[1], 0, static_cast<std::int16_t>(panel.shyst.maximum())),
        list_index("trigeredge", panel.trigeredge),
        list_index("trigsource", panel.trigsource),
    };
}

Rows channel_rows(const KeptSettings& kept) {
    auto& [first, second] = kept.panel.channel;
    return {
        position("ch1text.top", kept, ch1),   position("ch2text.top", kept, ch2),
        list_index("ch1vdiv", first.vdiv),    list_index("ch2vdiv", second.vdiv),
        check_box("inviatr1", first.inviatr), check_box("inviatr2", second.inviatr),
        check_box("invert1", first.invert),   check_box("invert2", second.invert),
        check_box("ch1enable", first.enable), check_box("ch2enable", second.enable),
        delay("horpos", kept, ch1),           delay("horpos2", kept, ch2),
        check_box("slenps1", first.slenps),   check_box("slenps2", second.slenps),
    };
}

Rows display_and_measurement_rows(const KeptSettings& kept) {
    FrontPanel& panel = kept.panel;
    return {
        list_index("seltimediv", panel.seltimediv),
        check_box("eyeon", panel.eyeon),
        check_box("gridenable", panel.gridenable),
        check_box("persist", panel.persist),
        check_box("average", panel.average),
        adjust_target("TabStrip2", kept),
        check_box("displaymeas", panel.check1),
        list_index("cmbmeas(0)", panel.measurement[0].selector),
        list_index("cmbmeas(1)", panel.measurement[1].selector),
        list_index("cmbmeas(2)", panel.measurement[2].selector),
        annotations("chkmeasanno", kept),
    };
}

Rows settings_dialog_rows(const KeptSettings& kept) {
    return {
        colour("colorch1", kept.colours.ch1),
        colour("colorch2", kept.colours.ch2),
        colour("colorbgnd", kept.colours.background),
        colour("colorcursor", kept.colours.normal_text),
        colour("colordivbgnd", kept.colours.text_background),
        colour("colorgrid", kept.colours.grid),
        colour("colorannos", kept.colours.annotations),
        stored("persisttime", kept.display.persisttime, 0, plot::generations),
        folder("snapshotpath", kept.display.snapshotpath),
        option("snapshotdialog", kept.display.snapshotdialog),
        option("snapshotinvert", kept.display.snapshotinvert),
    };
}

} // namespace

std::vector<SettingRow> setting_rows(const KeptSettings& kept) {
    Rows rows = cursor_and_trigger_rows(kept);
    add(rows, channel_rows(kept));
    add(rows, display_and_measurement_rows(kept));
    add(rows, settings_dialog_rows(kept));
    return rows;
}

} // namespace kv408
