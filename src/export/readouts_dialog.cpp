#include "export/readouts_dialog.h"

#include <utility>

#include "state/engineering_format.h"

namespace kv408 {
namespace {

using namespace std::chrono_literals;

/// Between two updates of the values.
constexpr std::chrono::nanoseconds between_readouts = 200ms;

constexpr std::array<std::string_view, 8> readout_names = {
    "Delta t",      "1 / Delta t",     "CH1 at cursor 1", "CH1 at cursor 2",
    "CH1 2 less 1", "CH2 at cursor 1", "CH2 at cursor 2", "CH2 2 less 1"};

std::string with_unit(double value, std::string_view unit) {
    constexpr int digits = 4;
    return engformat(value, digits).append(unit);
}

std::string volts_or_why(const CrossingVolts& crossing) {
    return crossing.volts ? with_unit(*crossing.volts, "V")
                          : "--- (" + std::string(text_of(crossing.why)) + ')';
}

} // namespace

ReadoutsDialog::ReadoutsDialog(const Source& source, const Clock& clock)
    : source_(source), clock_(clock) {
    std::string names;
    for (const std::string_view name : readout_names) {
        names.append(names.empty() ? "" : "\n").append(name);
    }
    controls_.lblReadoutsNames.set_caption(std::move(names));
    for (const Channel channel : both_channels) {
        const std::string caption = channel_label(channel) + " clips";
        for (Label* const mark : {&controls_.above.at(channel), &controls_.below.at(channel)}) {
            mark->set_caption(caption);
            mark->set_visible(false);
        }
    }
    controls_.chkClippingMark.on_click([this] { mark_clipping(); });
    controls_.mnureadouts.on_click([this] { open(); });
}

void ReadoutsDialog::open() {
    open_ = true;
    if (show_) {
        show_();
    }
    refresh();
}

bool ReadoutsDialog::has_time_cursors() const {
    return cursor_mode::is_time(source_.cursors.cursormode);
}

double ReadoutsDialog::interval() const {
    return cursor_interval(source_.cursors, source_.time_base.samplerate);
}

CursorCrossings ReadoutsDialog::crossings(Channel channel) const {
    std::optional<NoCrossing> hidden;
    if (!source_.panel.channel.at(channel).enable.checked()) {
        hidden = NoCrossing::off;
    } else if (source_.sweeps.last()->channel.at(channel)->codes.empty()) {
        hidden = NoCrossing::no_sweep;
    } else if (source_.acquisition.traces_withheld() ||
               (channel == ch2 && !source_.acquisition.ready[ch2])) {
        // As it is drawn: only CH2 waits for a whole new sweep.
        hidden = NoCrossing::no_trace;
    }
    return crossings_of({.hidden = hidden,
                         .channel = source_.channels.at(channel),
                         .samples = source_.samples.at(channel)},
                        source_.cursors);
}

Clipping ReadoutsDialog::shown_clipping(Channel channel) {
    const ChannelControls& controls = source_.panel.channel.at(channel);
    const auto& part = source_.sweeps.last()->channel.at(channel);
    if (!controls.enable.checked() || source_.acquisition.traces_withheld()) {
        return {};
    }
    const Clipping of_codes = clipping_.look(channel, part);
    return part->conversion.inverted
               ? Clipping{.lowest = of_codes.highest, .highest = of_codes.lowest}
               : of_codes;
}

std::string ReadoutsDialog::values() const {
    if (!has_time_cursors()) {
        return "--- (no time cursors: choose Time in the frame Cursor)";
    }
    const double seconds = interval();
    std::string text =
        with_unit(seconds, "s") + '\n' +
        (seconds > 0.0 ? with_unit(1.0 / seconds, "Hz") : "--- (both cursors at one place)");
    for (const Channel channel : both_channels) {
        const CursorCrossings found = crossings(channel);
        for (const CrossingVolts& volts :
             {found.cursor.front(), found.cursor.back(), found.difference}) {
            text += '\n' + volts_or_why(volts);
        }
    }
    return text;
}

void ReadoutsDialog::show_mark(Label& mark, Channel channel, bool visible) const {
    if (const auto colour = source_.panel.channel.at(channel).vdivtext.fore_colour()) {
        mark.set_fore_colour(*colour);
    }
    mark.set_visible(visible);
}

void ReadoutsDialog::mark_clipping() {
    const bool marks = controls_.chkClippingMark.checked();
    std::string clipping;
    for (const Channel channel : both_channels) {
        const Clipping clips = shown_clipping(channel);
        show_mark(controls_.above.at(channel), channel, marks && clips.highest);
        show_mark(controls_.below.at(channel), channel, marks && clips.lowest);
        if (clips.highest || clips.lowest) {
            clipping += std::string(clipping.empty() ? "" : "\n") + "CH" +
                        std::to_string(number_of(channel)) +
                        " leaves the instrument's scale: its highest or lowest values are cut off";
        }
    }
    controls_.lblReadoutsClipping.set_caption(clipping.empty() ? "Nothing clips" : clipping);
}

void ReadoutsDialog::refresh() {
    refreshed_ = clock_.now();
    controls_.lblReadoutsValues.set_caption(values());
    mark_clipping();
}

void ReadoutsDialog::tick_over() {
    if (open_ && clock_.now() - refreshed_ >= between_readouts) {
        refresh();
    } else if (open_ || controls_.chkClippingMark.checked()) {
        mark_clipping();
    }
}

} // namespace kv408
