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
#include "state/text.h"

namespace kv408 {
namespace {

using Rows = std::vector<SettingRow>;
using Values = std::vector<std::string>;

constexpr std::int16_t last_row = plot::height - 1;
constexpr std::int16_t last_column = plot::width - 1;
/// The adjust wheel's end in level codes.
constexpr std::int16_t highest_level = plot::wheel_span * codes_per_wheel_step;
constexpr std::uint32_t saved_colour_bits = 0xFFFFFF;

/// `text` as a line of the file can hold it, and as it comes back: control characters, which would
/// part or end its fields, count as the spaces around a value do.
std::string on_one_line(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char character) { return character >= 0 && character < ' '; },
        ' ');
    return std::string(without_blanks(line));
}

/// The integer part of the number that the whole of `text` is, when it lies within
/// `lowest`..`highest`.
std::optional<int> integer_part(std::string_view text, int lowest, int highest) {
    const double number = std::trunc(entire_number(text).value_or(lowest - 1));
    if (number < lowest || number > highest) {
        return std::nullopt;
    }
    return round_to_int32(number);
}

/// Where a value stands in the file, and what people call it.
struct PlaceInFile {
    int line;
    const char* key;
    const char* words;
};

/// A 16-bit number that is only stored, held within `lowest`..`highest`.
SettingRow stored(PlaceInFile where, std::int16_t& place, std::int16_t lowest,
                  std::int16_t highest) {
    return {.line = where.line,
            .key = where.key,
            .words = where.words,
            .write = [&place] { return Values{printed_field(place)}; },
            .read =
                [&place, lowest, highest](std::string_view value, bool /*first*/) {
                    const auto number = int16_in(value);
                    if (number) {
                        place = std::clamp(*number, lowest, highest);
                    }
                    return number.has_value();
                }};
}

/// The selected entry of a list.
SettingRow row_of(ListBox& list) {
    return {.line = list.about().line,
            .key = list.key(),
            .words = list.about().words,
            .write = [&list] { return Values{printed_field(list.index())}; },
            .read =
                [&list](std::string_view value, bool /*first*/) {
                    const auto index = int16_in(value);
                    if (!index || *index < 0 || !list.has_index(*index)) {
                        return false;
                    }
                    list.set_index(*index);
                    return true;
                }};
}

/// True for 1, false for 0, nothing for any other number and for none.
template <typename Integer>
std::optional<bool> yes_or_no(const std::optional<Integer>& number) {
    return number && (*number == 0 || *number == 1) ? std::optional(*number == 1) : std::nullopt;
}

/// A check box.
SettingRow row_of(CheckBox& box) {
    return {.line = box.about().line,
            .key = box.key(),
            .words = box.about().words,
            .write = [&box] { return Values{printed_field(box.checked() ? 1 : 0)}; },
            .read =
                [&box](std::string_view value, bool /*first*/) {
                    const auto checked = yes_or_no(int16_in(value));
                    if (checked) {
                        box.set_checked(*checked);
                    }
                    return checked.has_value();
                }};
}

/// An option that is 0 or 1 and that no control of the panel shows.
SettingRow option(PlaceInFile where, bool& place) {
    return {.line = where.line,
            .key = where.key,
            .words = where.words,
            .write = [&place] { return Values{printed_field(place ? 1 : 0)}; },
            .read =
                [&place](std::string_view value, bool /*first*/) {
                    const auto chosen = yes_or_no(int32_in(value));
                    if (chosen) {
                        place = *chosen;
                    }
                    return chosen.has_value();
                }};
}

SettingRow colour(PlaceInFile where, Colour& place) {
    return {.line = where.line,
            .key = where.key,
            .words = where.words,
            .write =
                [&place] {
                    return Values{
                        printed_field(static_cast<std::int32_t>(place.value & saved_colour_bits))};
                },
            .read =
                [&place](std::string_view value, bool /*first*/) {
                    const auto number = int32_in(value);
                    if (number) {
                        place.value = static_cast<std::uint32_t>(*number) & saved_colour_bits;
                    }
                    return number.has_value();
                }};
}

/// The wheel value of a channel's vertical position.
SettingRow position(const KeptSettings& kept, Channel channel) {
    return {
        .line = channel == ch1 ? 13 : 14,
        .key = channel == ch1 ? "ch1text.top" : "ch2text.top",
        .words = channel == ch1 ? "CH1 position" : "CH2 position",
        .write = [&kept,
                  channel] { return Values{printed_field(kept.channels[channel].marker_wheel)}; },
        .read =
            [&kept, channel](std::string_view value, bool /*first*/) {
                const auto number = int32_in(value);
                if (number) {
                    kept.adjust.move_channel(channel, std::clamp(*number, 0, plot::wheel_span));
                }
                return number.has_value();
            }};
}

/// The text of a channel's delay box, in picoseconds.
SettingRow delay(const KeptSettings& kept, Channel channel) {
    const TextBox& box = kept.panel.channel[channel].psofset;
    return {.line = box.about().line,
            .key = box.key(),
            .words = box.about().words,
            .write =
                [&kept, channel] {
                    return Values{on_one_line(
                        delay_text(kept.panel.channel[channel].psofset, kept.channels[channel]))};
                },
            .read =
                [&kept, channel](std::string_view value, bool /*first*/) {
                    kept.adjust.restore_delay(channel, value);
                    return true;
                }};
}

/// The selected tab of the cursor strip, by its position.
SettingRow cursor_type(TabStrip& strip) {
    return {.line = strip.about().line,
            .key = strip.key(),
            .words = strip.about().words,
            .write = [&strip] { return Values{printed_field(strip.selected())}; },
            .read =
                [&strip](std::string_view value, bool /*first*/) {
                    const auto tab = integer_part(value, 1, static_cast<int>(strip.tabs().size()));
                    if (tab) {
                        strip.select(*tab);
                    }
                    return tab.has_value();
                }};
}

/// The selected adjust target, by its key; one that the strip does not have is passed over.
SettingRow adjust_target(const KeptSettings& kept) {
    return {.line = kept.panel.tabstrip2.about().line,
            .key = kept.panel.tabstrip2.key(),
            .words = kept.panel.tabstrip2.about().words,
            .write = [&kept] { return Values{kept.panel.tabstrip2.selected_key()}; },
            .read =
                [&kept](std::string_view value, bool /*first*/) {
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
SettingRow annotations(PlaceInFile where, FrontPanel& panel) {
    auto& slots = panel.measurement;
    const auto put = [&slots](const auto& checked) {
        for (std::size_t index = 0; index < slots.size(); ++index) {
            slots[index].annotate.put_checked(checked.at(index));
        }
    };
    return {.line = where.line,
            .key = where.key,
            .words = where.words,
            .write = [&panel] { return checked_annotations(panel); },
            .read =
                [&slots, put](std::string_view value, bool first) {
                    const auto slot = integer_part(value, 0, static_cast<int>(slots.size()) - 1);
                    if (!slot) {
                        return false;
                    }
                    std::array<bool, 3> checked = {};
                    // What a file marks takes the place of what was marked before it.
                    for (std::size_t index = 0; index < slots.size() && !first; ++index) {
                        checked.at(index) = slots[index].annotate.checked();
                    }
                    const auto marked = static_cast<std::size_t>(*slot);
                    checked.at(marked) = true;
                    put(checked);
                    slots[marked].annotate.mouse_down();
                    // The handler unchecks the other boxes; each line of the file leaves its own
                    // checked.
                    put(checked);
                    return true;
                },
            .most_lines = static_cast<int>(slots.size())};
}

SettingRow folder(PlaceInFile where, std::string& place) {
    return {.line = where.line,
            .key = where.key,
            .words = where.words,
            .write = [&place] { return Values{on_one_line(place)}; },
            .read =
                [&place](std::string_view value, bool /*first*/) {
                    place = on_one_line(value);
                    return true;
                }};
}

void add(Rows& rows, Rows more) {
    std::move(more.begin(), more.end(), std::back_inserter(rows));
}

/// The rows of the panel's controls.
Rows control_rows(const KeptSettings& kept) {
    FrontPanel& panel = kept.panel;
    Rows rows = {cursor_type(panel.tabstrip3), adjust_target(kept), delay(kept, ch1),
                 delay(kept, ch2), annotations({37, "chkmeasanno", "Marked measurement"}, panel)};
    for (Control* const control : panel.all) {
        const AnyControl any = control->kind();
        if (control->about().line == 0) {
            continue;
        }
        if (const auto* const list = std::get_if<ListBox*>(&any)) {
            rows.push_back(row_of(**list));
        } else if (const auto* const box = std::get_if<CheckBox*>(&any)) {
            rows.push_back(row_of(**box));
        }
    }
    return rows;
}

/// The rows of what the wheel and dragging set.
Rows quantity_rows(const KeptSettings& kept) {
    const auto most = static_cast<std::int16_t>(kept.panel.shyst.maximum());
    return {
        stored({1, "intcr1vpos", "Voltage cursor 1"}, kept.cursors.vpos[0], 0, last_row),
        stored({2, "intcr1hpos", "Time cursor 1"}, kept.cursors.hpos[0], 0, last_column),
        stored({3, "intcr2vpos", "Voltage cursor 2"}, kept.cursors.vpos[1], 0, last_row),
        stored({4, "intcr2hpos", "Time cursor 2"}, kept.cursors.hpos[1], 0, last_column),
        stored({7, "trigpos1", "Trigger level of TRIG1"}, kept.trigger.saved_trigpos[0], 0,
               highest_level),
        stored({8, "trigpos2", "Trigger level of TRIG2"}, kept.trigger.saved_trigpos[1], 0,
               highest_level),
        stored({9, "hyst1", "Hysteresis of TRIG1"}, kept.trigger.hyst[0], 0, most),
        stored({10, "hyst2", "Hysteresis of TRIG2"}, kept.trigger.hyst[1], 0, most),
        position(kept, ch1),
        position(kept, ch2),
    };
}

/// The rows of what the settings dialog edits.
Rows settings_dialog_rows(const KeptSettings& kept) {
    return {
        colour({38, "colorch1", "Colour of CH1"}, kept.colours.ch1),
        colour({39, "colorch2", "Colour of CH2"}, kept.colours.ch2),
        colour({40, "colorbgnd", "Colour of the background"}, kept.colours.background),
        colour({41, "colorcursor", "Colour of texts"}, kept.colours.normal_text),
        colour({42, "colordivbgnd", "Colour behind texts"}, kept.colours.text_background),
        colour({43, "colorgrid", "Colour of the grid"}, kept.colours.grid),
        colour({44, "colorannos", "Colour of annotations"}, kept.colours.annotations),
        stored({45, "persisttime", "Earlier sweeps shown"}, kept.display.persisttime, 0,
               plot::generations),
        folder({46, "snapshotpath", "Folder for snapshots"}, kept.display.snapshotpath),
        option({47, "snapshotdialog", "Always show Save-Dialog"}, kept.display.snapshotdialog),
        option({48, "snapshotinvert", "Invert Colors"}, kept.display.snapshotinvert),
    };
}

} // namespace

std::vector<SettingRow> setting_rows(const KeptSettings& kept) {
    Rows rows = control_rows(kept);
    add(rows, quantity_rows(kept));
    add(rows, settings_dialog_rows(kept));
    std::sort(rows.begin(), rows.end(),
              [](const SettingRow& one, const SettingRow& other) { return one.line < other.line; });
    return rows;
}

} // namespace kv408
