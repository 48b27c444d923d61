#include <array>
#include <limits>
#include <string>

#include "remote/choices.h"
#include "remote/tool_commands.h"
#include "remote/tree.h"

namespace kv408 {
namespace {

using Cell = const MeasurementStatistics&;

constexpr double no_statistic = std::numeric_limits<double>::quiet_NaN();
constexpr std::array<std::string_view, 3> colour_choices{"RED", "ORANge", "VIOLet"};
static_assert(colour_choices.size() == limit_colours.size());
constexpr std::array<std::string_view, 4> limit_actions{"NONE", "BEEP", "STOP", "SNAPshot"};

std::string count_reply(std::uint64_t count) {
    return whole_reply(static_cast<std::int64_t>(count));
}

/// A number of `cell` that there is only once a value has come.
std::string of_values(Cell cell, double (RunningStatistics::*number)() const) {
    return real_reply(cell.values.count() > 0 ? (cell.values.*number)() : no_statistic);
}

/// What the window tells of one value, column by column.
struct StatisticsColumn {
    std::string_view header;
    std::string (*reply)(Cell);
};
constexpr std::array statistics_columns{
    StatisticsColumn{"CURRent",
                     [](Cell cell) {
                         return real_reply(cell.present ? cell.present->value.value_or(no_statistic)
                                                        : no_statistic);
                     }},
    StatisticsColumn{"MEAN", [](Cell cell) { return of_values(cell, &RunningStatistics::mean); }},
    StatisticsColumn{"DEViation",
                     [](Cell cell) { return of_values(cell, &RunningStatistics::deviation); }},
    StatisticsColumn{"MINimum",
                     [](Cell cell) { return of_values(cell, &RunningStatistics::least); }},
    StatisticsColumn{"MAXimum",
                     [](Cell cell) { return of_values(cell, &RunningStatistics::greatest); }},
    StatisticsColumn{"COUNt", [](Cell cell) { return count_reply(cell.values.count()); }},
    StatisticsColumn{"OUTSide", [](Cell cell) { return count_reply(cell.outside); }},
    StatisticsColumn{"WITHout", [](Cell cell) {
                         std::string counts = count_reply(cell.without.front());
                         add_item(counts, count_reply(cell.without.back()));
                         return counts;
                     }}};

/// The answer of `told` for the channel and the measurement that the query names.
Command value_query(Instrument& instrument, std::string_view header,
                    std::span<const StatisticsColumn> told) {
    Command command{"STATistics:" + std::string(header)};
    command.answer = [&instrument, told](const Call& call) {
        const std::size_t channel = choice_of(call.parameters[0], channel_choices);
        const std::size_t row = choice_of(call.parameters[1], measurement_choices);
        const Statistics& statistics = instrument.scope().tools().statistics().statistics();
        std::string answer;
        for (const StatisticsColumn& column : told) {
            add_item(answer, column.reply(statistics.of(channel, row)));
        }
        return answer;
    };
    command.query_takes = {2, 2};
    command.value = "channel, and measurement as in `STATistics:VALue`";
    return command;
}

/// One of the two limits of the value that is chosen.
struct Limit {
    TextBox StatisticsControls::*box;
    std::optional<double> ValueLimits::*value;
};

Quantity quantity_of(const StatisticsDialog& dialog) {
    switch (measurement_rows()[dialog.chosen_row()].unit) {
    case MeasurementUnit::second:
        return Quantity::seconds;
    case MeasurementUnit::hertz:
        return Quantity::hertz;
    default:
        return Quantity::volts;
    }
}

Command limit_command(Instrument& instrument, const char* header, const Limit& limit) {
    NumberSetting setting;
    setting.told = "volts, seconds or hertz, by the measurement";
    setting.range_now = [&instrument](const Call&) {
        constexpr double most = 1e12;
        return NumberRange{-most, most, 0.0, quantity_of(instrument.scope().tools().statistics())};
    };
    setting.set = [&instrument, limit](const Call& call, double value) {
        instrument.act(call.client, [&](Scope& scope) {
            (scope.tools().statistics().controls().*limit.box).set_text(typed_number(value));
        });
    };
    setting.get = [&instrument, limit](const Call&) {
        const StatisticsDialog& dialog = instrument.scope().tools().statistics();
        const ValueLimits& limits =
            dialog.statistics().limits(dialog.chosen_channel(), dialog.chosen_row());
        return (limits.*limit.value).value_or(no_statistic);
    };
    return real_setting(header, setting);
}

/// Whether there is that limit; one that is switched on is 0 at first.
Command limit_state(Instrument& instrument, const char* header, TextBox StatisticsControls::*box) {
    return boolean_setting(
        header,
        [&instrument, box](const Call& call, bool on) {
            instrument.act(call.client, [&](Scope& scope) {
                TextBox& typed = scope.tools().statistics().controls().*box;
                if (typed.text().empty() == on) {
                    typed.set_text(on ? "0" : "");
                }
            });
        },
        [&instrument, box](const Call&) {
            return !(instrument.scope().tools().statistics().controls().*box).text().empty();
        });
}

} // namespace

std::vector<Command> statistics_commands(Instrument& instrument) {
    using Controls = StatisticsControls;
    const ToolCommands<StatisticsDialog> window(instrument, &Tools::statistics);
    const Limit low{&Controls::txtStatisticsLow, &ValueLimits::least};
    const Limit high{&Controls::txtStatisticsHigh, &ValueLimits::greatest};
    std::vector<Command> all{
        window.state("STATistics:STATe"),
        window.press("STATistics:RESet", &Controls::cmdStatisticsReset),
        window.list("STATistics:SOURce", channel_choices, &Controls::cmbStatisticsChannel),
        window.list("STATistics:VALue", measurement_choices, &Controls::cmbStatisticsValue),
        limit_command(instrument, "STATistics:LOW", low),
        limit_state(instrument, "STATistics:LOW:STATe", low.box),
        limit_command(instrument, "STATistics:HIGH", high),
        limit_state(instrument, "STATistics:HIGH:STATe", high.box),
        window.list("STATistics:COLor", colour_choices, &Controls::cmbStatisticsColour),
        window.list("STATistics:ACTion", limit_actions, &Controls::cmbStatisticsAction),
        query_command(
            "STATistics:SWEeps",
            [window](const Call&) { return count_reply(window.dialog().statistics().sweeps()); }),
        value_query(instrument, "ALL", statistics_columns),
    };
    for (const StatisticsColumn& column : statistics_columns) {
        all.push_back(value_query(instrument, column.header, std::span(&column, 1)));
    }
    return all;
}

} // namespace kv408
