#include "simulator/serial_line.h"

#include <algorithm>

namespace kv408::simulator {

using std::chrono::nanoseconds;

nanoseconds wire_time(std::size_t bytes, std::uint32_t baud_rate) {
    constexpr std::uint64_t bit_nanoseconds_per_byte = 10'000'000'000U;
    return nanoseconds(
        static_cast<std::int64_t>(bytes * bit_nanoseconds_per_byte / std::uint64_t{baud_rate}));
}

void SerialLine::send(std::span<const Byte> bytes, nanoseconds start) {
    const nanoseconds begin = std::max(start, free_from_);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        bytes_.push_back({bytes[index], begin + wire_time(index + 1, instrument_baud_rate)});
    }
    if (!bytes.empty()) {
        free_from_ = bytes_.back().arrival;
    }
}

void SerialLine::stop_sending(nanoseconds time) {
    const nanoseconds last = time + wire_time(1, instrument_baud_rate);
    while (!bytes_.empty() && bytes_.back().arrival > last) {
        bytes_.pop_back();
    }
    free_from_ = std::min(free_from_, last);
}

std::size_t SerialLine::arrived(nanoseconds now) const {
    const auto first_later = std::upper_bound(
        bytes_.begin(), bytes_.end(), now,
        [](nanoseconds time, const TimedByte& byte) { return time < byte.arrival; });
    return static_cast<std::size_t>(first_later - bytes_.begin());
}

std::optional<nanoseconds> SerialLine::arrival(std::size_t count) const {
    if (count == 0 || count > bytes_.size()) {
        return std::nullopt;
    }
    return bytes_[count - 1].arrival;
}

std::vector<Byte> SerialLine::take(std::size_t most, nanoseconds now) {
    const auto end = bytes_.begin() + static_cast<std::ptrdiff_t>(std::min(most, arrived(now)));
    std::vector<Byte> taken;
    for (auto byte = bytes_.begin(); byte != end; ++byte) {
        taken.push_back(byte->value);
    }
    bytes_.erase(bytes_.begin(), end);
    return taken;
}

void SerialLine::drop_arrived(nanoseconds now) {
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(arrived(now)));
}

} // namespace kv408::simulator
