#include <array>
#include <limits>

#include "measure/measured_value.h"
#include "measure/measurement_rows.h"
#include "remote/choices.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tree.h"
#include "remote/values.h"
#include "scope/parts.h"

namespace kv408 {
namespace {

constexpr double not_measured = std::numeric_limits<double>::quiet_NaN();

// The value of `row` of `channel` in `last`; not a number where there is none.
double value_of(const MeasuredSweep& last, Channel channel, const MeasurementRow& row) {
    return measured_value(row, last.results.at(channel),
                          last.sweep->channel.at(channel)->columns_per_second)
        .value.value_or(not_measured);
}

// The sweep whose results are told; null, with the client's error, where there are none.
const MeasuredSweep* measured_sweep(const Instrument& instrument, Client& client) {
    try {
        if (!instrument.parts().panel.check1.checked()) {
            throw Refused{ScpiError::settings_conflict, "Measure is off"};
        }
        const MeasuredSweep& last = instrument.sweep_of(client);
        if (!last.measured) {
            throw Refused{ScpiError::data_stale, "The sweep was not measured"};
        }
        return &last;
    } catch (const Refused& refused) {
        client.note(refused); // and the answer is that nothing can be measured
    }
    return nullptr;
}

// The answer of `rows` for the channel that `call` names.
std::string answer_of(Instrument& instrument, const Call& call,
                      std::span<const MeasurementRow> rows) {
    const Channel channel = both_channels.at(choice_of(call.parameters.front(), channel_choices));
    const MeasuredSweep* const last = measured_sweep(instrument, call.client);
    const bool there = last != nullptr && last->sweep->came.at(channel) &&
                       instrument.parts().panel.channel.at(channel).enable.checked();
    std::string answer;
    for (const MeasurementRow& row : rows) {
        add_item(answer, real_reply(there ? value_of(*last, channel, row) : not_measured));
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
    command.value = choices_text(channel_choices);
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
