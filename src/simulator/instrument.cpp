#include "simulator/instrument.h"

#include <algorithm>
#include <span>

namespace kv408::simulator {
namespace {

using std::chrono::nanoseconds;

// Command codes.
constexpr Byte set_trigger_command = 8;
constexpr Byte set_gain_command = 9;
constexpr Byte fetch_point_command = 26;
constexpr Byte set_trigger_time_out_command = 27;
constexpr Byte linearity_command = 29;
constexpr Byte set_offset_1_command = 30;
constexpr Byte set_resolution_command = 31;
constexpr Byte sweep_command = 32;
constexpr Byte read_flash_command = 33;
constexpr Byte write_flash_command = 34;
constexpr Byte set_offset_2_command = 35;

constexpr std::int32_t zero_level_code = 2048;
constexpr std::int32_t least_time_out_us = 10;
constexpr Byte high_gain_code = 1;
constexpr Byte low_gain_code = 2;

} // namespace

std::optional<Command> Instrument::receive(Byte byte, nanoseconds at) {
    if (bench_.faults.no_power) {
        return std::nullopt;
    }
    const auto command = reader_.take(byte, at);
    if (command) {
        line_.stop_sending(at);
        linearity_run_.reset();
        execute(*command, at);
    }
    return command;
}

void Instrument::run_until(nanoseconds now) {
    if (bench_.faults.no_power) {
        line_.stop_sending(now);
        linearity_run_.reset();
        reader_ = {};
        settings_ = {};
        return;
    }
    while (linearity_run_ && linearity_run_->next_at <= now) {
        send({linearity_error()}, linearity_run_->next_at);
        linearity_run_->next_at += linearity_step;
        if (--linearity_run_->bytes_left == 0) {
            linearity_run_.reset();
        }
    }
}

void Instrument::execute(const Command& command, nanoseconds at) {
    if (set_up(command)) {
        acknowledge(command.code, at);
        return;
    }
    switch (command.code) {
    case linearity_command:
        acknowledge(command.code, at);
        linearity_run_ = {at + linearity_step, linearity_points};
        break;
    case sweep_command:
        send_samples(command.code, sweeper_.sweep(decode_sweep(command), settings_, at));
        break;
    case fetch_point_command:
        send_samples(command.code, sweeper_.point(decode_point(command), settings_, at));
        break;
    case read_flash_command: {
        const std::uint16_t word = flash_.read(word_argument(command, 0));
        reply(command.code, {static_cast<Byte>(word >> 8U), static_cast<Byte>(word & 0xFFU)},
              at + acknowledge_delay);
        break;
    }
    case write_flash_command:
        flash_.write(word_argument(command, 0), word_argument(command, 2));
        break;
    default:
        break;
    }
}

bool Instrument::set_up(const Command& command) {
    switch (command.code) {
    case set_trigger_command:
        set_trigger(command);
        return true;
    case set_gain_command:
        set_gain(command);
        return true;
    case set_trigger_time_out_command:
        settings_.trigger.time_out_us =
            std::max(std::int32_t{word_argument(command, 0)}, least_time_out_us);
        return true;
    case set_offset_1_command:
        settings_.offset_ps[0] = long_argument(command);
        return true;
    case set_offset_2_command:
        settings_.offset_ps[1] = long_argument(command);
        return true;
    case set_resolution_command:
        settings_.resolution_ps = long_argument(command);
        return true;
    default:
        return false;
    }
}

void Instrument::set_trigger(const Command& command) {
    TriggerSettings& trigger = settings_.trigger;
    switch (command.arguments[2]) {
    case 1:
    case 2:
        trigger.input = 0;
        trigger.rising = command.arguments[2] == 1;
        trigger.hysteresis_mv = command.arguments[3];
        break;
    case 21:
    case 22:
        trigger.input = 1;
        trigger.rising = command.arguments[2] == 21;
        trigger.hysteresis_mv = command.arguments[4];
        break;
    default: // keeps source, edge and hysteresis
        break;
    }
    trigger.level_mv = static_cast<std::int16_t>(word_argument(command, 0)) - zero_level_code;
}

void Instrument::set_gain(const Command& command) {
    for (std::size_t channel = 0; channel < 2; ++channel) {
        if (command.arguments.at(channel) == high_gain_code) {
            settings_.range.at(channel) = high_range;
        } else if (command.arguments.at(channel) == low_gain_code) {
            settings_.range.at(channel) = low_range;
        }
    }
}

void Instrument::acknowledge(Byte code, nanoseconds at) {
    const Faults& faults = bench_.faults;
    if (faults.acknowledge == AcknowledgeFault::lost) {
        return;
    }
    const bool wrong = faults.acknowledge == AcknowledgeFault::wrong;
    reply(code, {wrong ? faults.wrong_acknowledge : acknowledge_byte}, at + acknowledge_delay);
}

void Instrument::send_samples(Byte code, const SampleReply& samples) {
    std::vector<Byte> bytes = samples.bytes;
    const auto& limit = bench_.faults.block_bytes;
    const bool block = bytes.size() > waiting_reply.size();
    if (block && limit && *limit < bytes.size()) {
        bytes.resize(*limit);
    }
    reply(code, std::move(bytes), samples.ready, samples.codes_ready);
}

void Instrument::reply(Byte code, std::vector<Byte> bytes, nanoseconds start,
                       const std::vector<nanoseconds>& codes_ready) {
    const auto found = bench_.faults.replies.find(code);
    if (found == bench_.faults.replies.end() ||
        !strikes(found->second.after, found->second.times)) {
        send(std::move(bytes), start, codes_ready);
        return;
    }
    const ReplyFault& fault = found->second;
    bytes.resize(std::min(bytes.size(), fault.length.value_or(bytes.size())));
    for (Byte& byte : bytes) {
        byte = fault.replacement.value_or(byte) ^ fault.flipped_bits;
    }
    bytes.insert(bytes.begin(), fault.before.begin(), fault.before.end());
    bytes.insert(bytes.end(), fault.behind.begin(), fault.behind.end());
    std::vector<nanoseconds> late = codes_ready;
    for (nanoseconds& ready : late) {
        ready += fault.late;
    }
    send(std::move(bytes), start + fault.late, late);
}

void Instrument::send(std::vector<Byte> bytes, nanoseconds start,
                      const std::vector<nanoseconds>& codes_ready) {
    const Faults& faults = bench_.faults;
    bytes.insert(bytes.begin(), faults.extra_bytes.begin(), faults.extra_bytes.end());
    std::vector<Byte> sent;
    sent.reserve(bytes.size());
    for (const Byte byte : bytes) {
        bytes_since_loss_ = faults.lose_every > 0 ? bytes_since_loss_ + 1 : 0;
        if (faults.lose_every > 0 && bytes_since_loss_ >= faults.lose_every) {
            bytes_since_loss_ = 0;
            continue;
        }
        sent.push_back(byte ^ faults.flipped_bits);
    }
    if (codes_ready.empty()) {
        line_.send(sent, start);
        return;
    }
    for (std::size_t index = 0; index < sent.size(); ++index) {
        const std::size_t code = std::min(index / 2, codes_ready.size() - 1);
        line_.send(std::span(sent).subspan(index, 1), codes_ready[code]);
    }
}

Byte Instrument::linearity_error() {
    const double chance = noise_.uniform();
    int magnitude = 0;
    if (chance > 0.97) {
        magnitude = 2 + static_cast<int>(noise_.uniform() * 4.0);
    } else if (chance > 0.6) {
        magnitude = 1;
    }
    return static_cast<Byte>(noise_.uniform() < 0.5 ? -magnitude : magnitude);
}

} // namespace kv408::simulator
