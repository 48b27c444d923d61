#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <utility>

#include "panel/adjust.h"
#include "remote/choices.h"
#include "remote/panel_settings.h"
#include "remote/replies.h"
#include "remote/tree.h"
#include "remote/values.h"
#include "scope/parts.h"
#include "state/plot_geometry.h"
#include "state/samples.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 3> cursor_modes{"OFF", "VOLTage", "TIME"};
constexpr std::array<std::string_view, 2> cursor_sources{"CH1", "CH2"};

// The position of each mode's tab, in the order of the modes.
constexpr std::array<int, 3> tab_of_mode{3, 1, 2};

// How volts belong to a cursor's row, or seconds to its column.
struct CursorScale {
    bool volts;
    double per_unit; ///< volts of a row, seconds of a column
    double zero;     ///< row of 0 V, column of 0 s

    [[nodiscard]] double value(double place) const {
        return (volts ? zero - place : place - zero) * per_unit;
    }
    [[nodiscard]] double place(double value) const {
        return volts ? zero - value / per_unit : zero + value / per_unit;
    }
};

CursorScale scale_of(const Parts& parts) {
    const CursorState& cursors = parts.cursor_state;
    if (cursor_mode::is_time(cursors.cursormode)) {
        return {false, 1.0 / parts.time_base_state.samplerate, 0.0};
    }
    if (!cursor_mode::is_voltage(cursors.cursormode)) {
        throw Refused{ScpiError::settings_conflict, "The cursors are off"};
    }
    const ChannelState& channel = parts.channels.at(cursors.channel);
    const double zero = (zero_volt_code - channel.offsetdac) * channel.scale * channel.vtfactor;
    return {true, 1.0 / (channel.pixpermv * millivolts_per_volt), plot::centre_y - zero};
}

double place_of(const CursorState& cursors, const CursorScale& scale, std::size_t cursor) {
    return scale.volts ? cursors.vpos.at(cursor) : cursors.hpos.at(cursor);
}

std::size_t cursor_of(const Call& call) {
    return static_cast<std::size_t>(call.suffixes.front() - 1);
}

PanelSettings::Turned cursor_position() {
    return {.tab =
                [](const Parts&, const Call& call) {
                    return std::string(cursor_of(call) == 0 ? adjust_key::cursor_1
                                                            : adjust_key::cursor_2);
                },
            .range =
                [](const Parts& parts, const Call& call) {
                    const CursorScale scale = scale_of(parts);
                    const double last = scale.volts ? plot::height - 1 : plot::width - 1;
                    const CursorState factory;
                    const double preset = scale.value(place_of(factory, scale, cursor_of(call)));
                    return scale.volts ? NumberRange{scale.value(last), scale.value(0), preset,
                                                     Quantity::volts}
                                       : NumberRange{scale.value(0), scale.value(last), preset,
                                                     Quantity::seconds};
                },
            .wheel =
                [](const Parts& parts, const Call&, double value) {
                    const CursorScale scale = scale_of(parts);
                    const double place = std::round(scale.place(value));
                    return scale.volts ? plot::wheel_span - 2 * place : place;
                },
            .get =
                [](const Parts& parts, const Call& call) {
                    const CursorScale scale = scale_of(parts);
                    return scale.value(place_of(parts.cursor_state, scale, cursor_of(call)));
                },
            .told = "volts or seconds, by the mode"};
}

Command mode_command(Instrument& instrument) {
    return choice_setting(
        "CURSor:MODE", cursor_modes,
        [&instrument](const Call& call, std::size_t mode) {
            instrument.act(call.client, [mode](Scope& scope) {
                scope.panel().tabstrip3.select(tab_of_mode.at(mode));
            });
        },
        [&instrument](const Call&) {
            const std::int16_t mode = instrument.parts().cursor_state.cursormode;
            return cursor_mode::is_voltage(mode) ? std::size_t{1}
                   : cursor_mode::is_time(mode)  ? std::size_t{2}
                                                 : std::size_t{0};
        });
}

Command difference_command(Instrument& instrument) {
    return query_command("CURSor:DELTa", [&instrument](const Call&) {
        const Parts& parts = instrument.parts();
        const CursorScale scale = scale_of(parts);
        return real_reply(std::abs(place_of(parts.cursor_state, scale, 1) -
                                   place_of(parts.cursor_state, scale, 0)) *
                          scale.per_unit);
    });
}

/// The read-outs of the time cursors. Throws `Refused` where these are not shown.
const ReadoutsDialog& readouts_of(const Instrument& instrument) {
    const ReadoutsDialog& readouts = instrument.parts().tools.readouts();
    if (!readouts.has_time_cursors()) {
        throw Refused{ScpiError::settings_conflict, "The time cursors are off"};
    }
    return readouts;
}

Command inverse_command(Instrument& instrument) {
    return query_command("CURSor:DELTa:INVerse", [&instrument](const Call&) {
        // A zero between the cursors has an infinite inverse.
        return real_reply(1.0 / readouts_of(instrument).interval());
    });
}

/// A voltage of where the time cursors cross the trace of the channel that the query names.
Command crossing_query(const char* header, Instrument& instrument,
                       std::function<CrossingVolts(const CursorCrossings&, const Call&)> pick) {
    Command command{header};
    command.answer = [&instrument, pick = std::move(pick)](const Call& call) {
        const Channel channel =
            both_channels.at(choice_of(call.parameters.front(), channel_choices));
        const CursorCrossings found = readouts_of(instrument).crossings(channel);
        return real_reply(
            pick(found, call).volts.value_or(std::numeric_limits<double>::quiet_NaN()));
    };
    command.query_takes = {1, 1};
    command.value = choices_text(channel_choices);
    return command;
}

} // namespace

std::vector<Command> cursor_commands(Instrument& instrument) {
    const PanelSettings settings(instrument);
    return {
        mode_command(instrument),
        settings.choice("CURSor:SOURce", control(&FrontPanel::combocursorselect), cursor_sources),
        settings.turn("CURSor:POSition<n>", cursor_position()),
        difference_command(instrument),
        inverse_command(instrument),
        crossing_query("CURSor:VOLTage<n>", instrument,
                       [](const CursorCrossings& found, const Call& call) {
                           return found.cursor.at(cursor_of(call));
                       }),
        crossing_query("CURSor:VOLTage:DELTa", instrument,
                       [](const CursorCrossings& found, const Call&) { return found.difference; }),
    };
}

} // namespace kv408
