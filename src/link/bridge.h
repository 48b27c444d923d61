#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace kv408 {

using Byte = std::uint8_t;
using BridgeStatus = std::int32_t; ///< status of a bridge operation: 0 success, 13 read timed out

/// Status values that the program tests; every other one is a general failure.
inline constexpr BridgeStatus bridge_success = 0;
inline constexpr BridgeStatus bridge_read_timed_out = 13;
/// Status that our own bridges give for an operation they cannot do.
inline constexpr BridgeStatus bridge_failed = 255;

/// A longer serial number is cut to this many bytes.
inline constexpr std::size_t longest_serial_number = 256;

/// What became of an operation that counts: attached devices, bytes read or waiting.
struct Counted {
    BridgeStatus status = bridge_failed;
    std::uint32_t count = 0;
};

/// What became of reading a device's serial number.
struct SerialNumber {
    BridgeStatus status = bridge_failed;
    std::string text; ///< any bytes but zero, at most `longest_serial_number`
};

/// The USB-to-UART bridge through which the instrument is reached. One device is open at a time.
/// All operations block, none throws; each tells its status. The instrument program knows only
/// this.
class Bridge {
public:
    virtual ~Bridge() = default;

    /// Counts the attached devices.
    virtual Counted count_devices() = 0;

    /// The serial number of device `index` (from 0) of those that were counted last.
    virtual SerialNumber serial_number(std::uint32_t index) = 0;

    /// Opens device `index` (from 0).
    virtual BridgeStatus open(std::uint32_t index) = 0;

    /// Closes the open device.
    virtual BridgeStatus close() = 0;

    /// Sets the link speed in baud.
    virtual BridgeStatus set_speed(std::uint32_t baud) = 0;

    /// Sets the time-out, in milliseconds, of all later reads and writes.
    virtual BridgeStatus set_time_out(std::uint32_t milliseconds) = 0;

    /// Empties the transmit queue and the receive queue.
    virtual BridgeStatus flush() = 0;

    /// Writes `bytes`.
    virtual BridgeStatus write(std::span<const Byte> bytes) = 0;

    /// Reads up to `bytes.size()` bytes within the time-out and counts them. Status 13 when nothing
    /// arrived in that time.
    virtual Counted read(std::span<Byte> bytes) = 0;

    /// Counts the received bytes that wait.
    virtual Counted waiting() = 0;

    /// Why the bridge cannot work, in plain words for a message box; empty while nothing is known.
    [[nodiscard]] virtual std::string trouble() const { return {}; }
};

} // namespace kv408
