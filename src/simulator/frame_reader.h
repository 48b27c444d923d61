#pragma once

#include "link/bridge.h"

#include <array>
#include <chrono>
#include <optional>
#include <vector>

namespace kv408::simulator {

/// The acknowledge byte.
inline constexpr Byte acknowledge_byte = 6;

/// Bytes of a command frame: start byte 4, command, five arguments, checksum.
inline constexpr std::size_t frame_size = 8;

/// A frame is given up when this time passes between two of its bytes.
inline constexpr std::chrono::nanoseconds longest_gap = std::chrono::milliseconds(5);

/// A command that arrived in a frame with the right checksum.
struct Command {
    Byte code = 0;                      ///< command code
    std::array<Byte, 5> arguments = {}; ///< argument 1 is element 0
};

/// The 16-bit quantity in arguments `first` (element index, high byte) and the next.
[[nodiscard]] std::uint16_t word_argument(const Command& command, std::size_t first);

/// The 32-bit quantity in the first four arguments, most significant byte first.
[[nodiscard]] std::int32_t long_argument(const Command& command);

/// Finds the command frames in what arrives at the instrument. Garbage before a frame, frames
/// with a wrong checksum and incomplete frames are skipped.
class FrameReader {
public:
    /// Takes the byte that arrived `at`; returns the command when it completes a frame. Times
    /// never go back.
    [[nodiscard]] std::optional<Command> take(Byte byte, std::chrono::nanoseconds at);

private:
    void drop_to_start_byte();

    std::vector<Byte> bytes_; // empty or beginning with the start byte, never a whole frame
    std::chrono::nanoseconds last_byte_at_{0};
};

} // namespace kv408::simulator
