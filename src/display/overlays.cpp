#include "display/overlays.h"

#include <algorithm>
#include <string>

#include "display/box_geometry.h"
#include "state/engineering_format.h"
#include "state/plot_geometry.h"
#include "state/rounding.h"
#include "state/samples.h"

namespace kv408 {
namespace {

std::uint8_t mean(std::uint8_t first, std::uint8_t second) {
    return static_cast<std::uint8_t>(round_half_even((first + second) / 2.0));
}

Colour mixed(Colour first, Colour second) {
    return rgb(mean(red_of(first), red_of(second)), mean(green_of(first), green_of(second)),
               mean(blue_of(first), blue_of(second)));
}

/// Rows below its channel's zero row at which the level of `source` lies, not rounded.
double level_distance(Channel source, const TriggerState& trigger, const Channels& channels) {
    const ChannelState& channel = channels[source];
    return (zero_volt_code - trigger.saved_trigpos[source]) * 2 * channel.scale * channel.vtfactor;
}

void show_offset(ChannelControls& controls, const ChannelState& channel) {
    const int distance = plot::centre_y - channel.pos;
    controls.ofset.set_caption(engformat(distance / channel.pixpermv / 1000.0, 3) + "V");
}

} // namespace

CursorLines cursor_lines(const CursorState& cursors, const ColourTable& colours) {
    CursorLines lines;
    const std::int16_t mode = cursors.cursormode;
    if (cursor_mode::is_voltage(mode)) {
        lines.kind = CursorLines::Kind::voltage;
        lines.place = {cursors.vpos[0], cursors.vpos[1]};
        lines.solid = {mode == cursor_mode::voltage_1, mode == cursor_mode::voltage_2};
    } else if (cursor_mode::is_time(mode)) {
        lines.kind = CursorLines::Kind::time;
        lines.place = {cursors.hpos[0], cursors.hpos[1]};
        lines.solid = {mode == cursor_mode::time_1, mode == cursor_mode::time_2};
    } else {
        return lines;
    }
    lines.colour = pixel_of(mixed(colours.channel(cursors.channel), colours.normal_text));
    return lines;
}

std::int32_t trigger_row(Channel source, const TriggerState& trigger, const Channels& channels) {
    return round_to_int32(level_distance(source, trigger, channels) + channels[source].pos);
}

void draw_overlays(const UnitPainter& painter, const Overlays& overlays) {
    // A line has no last unit: those at the right and at the bottom edge are left out.
    constexpr int right = plot::width - 1;
    constexpr int bottom = plot::height - 1;
    draw_marks(painter, overlays.marks);
    draw_histogram(painter, overlays.histogram);
    const CursorLines& lines = overlays.cursors;
    for (std::size_t cursor = 0; cursor < lines.place.size(); ++cursor) {
        const std::int32_t place = lines.place[cursor];
        const PenStyle style = lines.solid[cursor] ? PenStyle::solid : PenStyle::dotted;
        if (lines.kind == CursorLines::Kind::voltage) {
            painter.draw_row(place, 0, right, lines.colour, style);
        } else if (lines.kind == CursorLines::Kind::time) {
            painter.draw_column(place, 0, bottom, lines.colour, style);
        }
    }
    draw_annotations(painter, overlays.annotations);
    if (overlays.trigger.shown) {
        painter.draw_row(overlays.trigger.row, 0, right, overlays.trigger.colour, PenStyle::dotted);
    }
}

void show_labels(FrontPanel& panel, const Channels& channels, const TriggerState& trigger) {
    for (const Channel channel : both_channels) {
        ChannelControls& controls = panel.channel[channel];
        show_offset(controls, channels[channel]);
    }
    std::int32_t row = 0;
    if (const std::optional<Channel> selected = panel.selected_source()) {
        const Channel source = *selected;
        // The marker's top is what is rounded: at a half, rows would fall to the other side.
        const int zero_top = box::marker_top(channels[source].pos);
        row = round_to_int32(zero_top + level_distance(source, trigger, channels)) -
              box::marker_top(0);
        panel.trlevelmv.set_caption(
            printed_number((trigger.saved_trigpos[source] - zero_volt_code) *
                           channels[source].vtfactor) +
            "mV");
    }
    panel.trigertext.mark(
        std::clamp(row, plot::trigger_marker_highest, plot::trigger_marker_lowest));
}

} // namespace kv408
