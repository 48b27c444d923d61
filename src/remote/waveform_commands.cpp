#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

#include "remote/choices.h"
#include "remote/replies.h"
#include "remote/setting_commands.h"
#include "remote/tree.h"
#include "scope/parts.h"
#include "state/samples.h"
#include "state/units.h"

namespace kv408 {
namespace {

constexpr std::array<std::string_view, 3> formats{"ASCii", "WORD", "REAL"};
constexpr std::array<std::string_view, 2> orders{"MSBFirst", "LSBFirst"};

void take_last(const Instrument& instrument, Client& client) {
    const MeasuredSweep& last = instrument.sweep_of(client);
    client.waveform.sweep = last.sweep;
    client.waveform.number = last.number;
}

// The channel of its sweep that the client has chosen.
const ChannelSweep& part_of(const Instrument& instrument, Client& client) {
    const ClientWaveform& waveform = client.waveform;
    if (!waveform.sweep) {
        take_last(instrument, client);
    }
    if (!waveform.sweep->came.at(waveform.source)) {
        throw Refused{ScpiError::data_stale, "The channel is not in this sweep"};
    }
    return *waveform.sweep->channel.at(waveform.source);
}

// Millivolts are a straight line over the codes as the instrument sent them.
struct Line {
    double volts_per_code;
    double volts_at_zero;
};

Line line_of(const Conversion& conversion) {
    constexpr int full_scale = 4096;
    const double per_code = conversion.atten * conversion.vtfactor / millivolts_per_volt;
    const double at_zero = conversion.inverted ? full_scale - conversion.swoffset - zero_volt_code
                                               : conversion.swoffset - zero_volt_code;
    return {conversion.inverted ? -per_code : per_code, at_zero * per_code};
}

std::string preamble(const Instrument& instrument, Client& client) {
    const ClientWaveform& waveform = client.waveform;
    const ChannelSweep& part = part_of(instrument, client);
    const Line line = line_of(part.conversion);
    const std::array<std::string, 10> fields{
        whole_reply(static_cast<int>(waveform.format)),
        whole_reply(static_cast<std::int64_t>(part.codes.size())),
        whole_reply(static_cast<std::int64_t>(waveform.number)),
        real_reply(part.time_per_point / picoseconds_per_second),
        real_reply(part.first_time / picoseconds_per_second),
        "0",
        real_reply(line.volts_per_code),
        real_reply(line.volts_at_zero),
        "0",
        whole_reply(number_of(waveform.source))};
    std::string answer;
    for (const std::string& field : fields) {
        add_item(answer, field);
    }
    return answer;
}

std::string data(const Instrument& instrument, Client& client) {
    const ClientWaveform& waveform = client.waveform;
    const ChannelSweep& part = part_of(instrument, client);
    std::string bytes;
    switch (waveform.format) {
    case ClientWaveform::Format::ascii:
        for (const double mv : part.mv) {
            add_item(bytes, real_reply(mv / millivolts_per_volt));
        }
        return bytes;
    case ClientWaveform::Format::word:
        for (const std::int16_t code : part.codes) {
            add_bytes(bytes, static_cast<std::uint16_t>(code), waveform.least_first);
        }
        break;
    case ClientWaveform::Format::real:
        for (const double mv : part.mv) {
            add_bytes(bytes, std::bit_cast<std::uint64_t>(mv / millivolts_per_volt),
                      waveform.least_first);
        }
        break;
    }
    return block_reply(bytes);
}

std::vector<Command> chosen_commands() {
    return {
        choice_setting(
            "WAVeform:SOURce", channel_choices,
            [](const Call& call, std::size_t index) {
                call.client.waveform.source = both_channels.at(index);
            },
            [](const Call& call) -> std::size_t { return call.client.waveform.source; }),
        choice_setting(
            "WAVeform:FORMat", formats,
            [](const Call& call, std::size_t index) {
                call.client.waveform.format = static_cast<ClientWaveform::Format>(index);
            },
            [](const Call& call) { return static_cast<std::size_t>(call.client.waveform.format); }),
        choice_setting(
            "WAVeform:BYTeorder", orders,
            [](const Call& call, std::size_t index) {
                call.client.waveform.least_first = index == 1;
            },
            [](const Call& call) {
                return call.client.waveform.least_first ? std::size_t{1} : std::size_t{0};
            }),
    };
}

} // namespace

std::vector<Command> waveform_commands(Instrument& instrument) {
    std::vector<Command> all = chosen_commands();
    all.push_back(query_command("WAVeform:PREamble", [&instrument](const Call& call) {
        return preamble(instrument, call.client);
    }));
    all.push_back(query_command("WAVeform:DATA", [&instrument](const Call& call) {
        return data(instrument, call.client);
    }));
    all.push_back(query_command("WAVeform:SEQuence", [&instrument](const Call& call) {
        take_last(instrument, call.client);
        return whole_reply(static_cast<std::int64_t>(call.client.waveform.number));
    }));
    return all;
}

} // namespace kv408
