#include <array>
#include <limits>

#include "measure/measured_value.h"
#include "measure/measurement_rows.h"
#include "remote/choices.h"
#include "remote/replies.h"
#include "remote/tree.h"
#include "remote/values.h"
#include "scope/parts.h"

namespace kv408 {
namespace {

// The value of `row` in `channel`; not a number where there is none.
double value_of(const Parts& parts, Channel channel, const MeasurementRow& row) {
    const Sweep& last = *parts.sweeps.last();
    const ChannelSweep& sweep = *last.channel.at(channel);
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    if (sweep.codes.empty() || !parts.panel.channel.at(channel).enable.checked()) {
        return none;
    }
    return measured_value(row, parts.measurements.measresults.at(channel), sweep.columns_per_second)
        .value.value_or(none);
}

// The answer of `rows` for the channel that `call` names.
std::string answer_of(Instrument& instrument, const Call& call,
                      std::span<const MeasurementRow> rows) {
    const Channel channel = both_channels.at(choice_of(call.parameters.front(), channel_choices));
    const Parts& parts = instrument.parts();
    const bool measured = parts.panel.check1.checked();
    if (!measured) {
        call.client.note({ScpiError::settings_conflict, "Measure is off"});
    }
    std::string answer;
    for (const MeasurementRow& row : rows) {
        add_item(answer, real_reply(measured ? value_of(parts, channel, row)
                                             : std::numeric_limits<double>::quiet_NaN()));
    }
    return answer;
}

Command measurement_query(const std::string& header, Instrument& instrument,
                          std::span<const MeasurementRow> rows) {
    Command command{"MEASure:" + header};
    command.answer = [&instrument, rows](const Call& call) {
        return answer_of(instrument, call, rows);
    };
    command.query_takes = {1, 1};
    return command;
}

} // namespace

std::vector<Command> measurement_commands(Instrument& instrument) {
    std::vector<Command> all;
    const std::span<const MeasurementRow> rows = measurement_rows();
    for (std::size_t row = 0; row < rows.size(); ++row) {
        all.push_back(measurement_query(std::string(measurement_choices[row]), instrument,
                                        rows.subspan(row, 1)));
    }
    all.push_back(measurement_query("ALL", instrument, rows));
    return all;
}

} // namespace kv408
