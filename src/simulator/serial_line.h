#pragma once

#include "link/bridge.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace kv408::simulator {

/// The speed of the instrument's serial port, baud.
inline constexpr std::uint32_t instrument_baud_rate = 833000;

/// Time that `bytes` bytes of ten bits (start, eight data, stop) take at `baud_rate`, which is
/// above 0.
[[nodiscard]] std::chrono::nanoseconds wire_time(std::size_t bytes, std::uint32_t baud_rate);

/// The line from the instrument to the bridge with the bridge's receive queue: every byte has the
/// time at which it arrives.
class SerialLine {
public:
    /// Puts `bytes` on the line from `start` on, or as soon as the line is free after it.
    void send(std::span<const Byte> bytes, std::chrono::nanoseconds start);

    /// Ends the sending at `time`: a byte that has not begun by then is never sent.
    void stop_sending(std::chrono::nanoseconds time);

    /// Number of bytes that wait in the queue at `now`.
    [[nodiscard]] std::size_t arrived(std::chrono::nanoseconds now) const;

    /// When the byte comes that makes the queue hold `count` bytes, 1..; nothing when it is not
    /// under way.
    [[nodiscard]] std::optional<std::chrono::nanoseconds> arrival(std::size_t count) const;

    /// Takes up to `most` bytes out of the queue.
    [[nodiscard]] std::vector<Byte> take(std::size_t most, std::chrono::nanoseconds now);

    /// Empties the queue of what has arrived by `now`; bytes still under way come later.
    void drop_arrived(std::chrono::nanoseconds now);

private:
    struct TimedByte {
        Byte value;
        std::chrono::nanoseconds arrival;
    };

    std::deque<TimedByte> bytes_; // arrivals rise
    std::chrono::nanoseconds free_from_{0};
};

} // namespace kv408::simulator
