#include "simulator/frame_reader.h"

#include <algorithm>

namespace kv408::simulator {
namespace {

constexpr Byte start_byte = 4;

} // namespace

std::uint16_t word_argument(const Command& command, std::size_t first) {
    return static_cast<std::uint16_t>((command.arguments.at(first) << 8U) |
                                      command.arguments.at(first + 1));
}

std::int32_t long_argument(const Command& command) {
    std::uint32_t value = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        value = (value << 8U) | command.arguments.at(index);
    }
    return static_cast<std::int32_t>(value);
}

std::optional<Command> FrameReader::take(Byte byte, std::chrono::nanoseconds at) {
    if (at - last_byte_at_ > longest_gap) {
        bytes_.clear();
    }
    last_byte_at_ = at;
    bytes_.push_back(byte);
    drop_to_start_byte();
    if (bytes_.size() < frame_size) {
        return std::nullopt;
    }
    Command command;
    command.code = bytes_[1];
    std::copy_n(bytes_.begin() + 2, command.arguments.size(), command.arguments.begin());
    unsigned sum = command.code;
    for (const Byte argument : command.arguments) {
        sum += argument;
    }
    if ((sum & 0xFFU) == bytes_[frame_size - 1]) {
        bytes_.clear();
        return command;
    }
    bytes_.erase(bytes_.begin());
    drop_to_start_byte();
    return std::nullopt;
}

void FrameReader::drop_to_start_byte() {
    bytes_.erase(bytes_.begin(), std::find(bytes_.begin(), bytes_.end(), start_byte));
}

} // namespace kv408::simulator
