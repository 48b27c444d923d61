#pragma once

// The system's serial ports, one step above libserialport. Not there on Windows.

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/clock.h"
#include "link/bridge.h"

struct sp_port;

namespace kv408 {

/// A serial port behind a USB device that has a serial number.
struct SerialPortEntry {
    std::string name;   ///< device node: "/dev/ttyUSB0"
    std::string serial; ///< serial-number string of the USB device, never empty
};

/// All such ports in the system's order, nothing when the system cannot tell. Other ports are left
/// out.
[[nodiscard]] std::optional<std::vector<SerialPortEntry>> list_serial_ports();

/// A look at the serial port `name` that changes nothing on it: 0 when it can be had, else the
/// system error number why not, `EBUSY` when another program keeps it for itself.
class SerialPortLook {
public:
    explicit SerialPortLook(const std::string& name);
    ~SerialPortLook();
    SerialPortLook(const SerialPortLook&) = delete;
    SerialPortLook& operator=(const SerialPortLook&) = delete;

    [[nodiscard]] int error() const { return error_; }

private:
    int handle_;
    int error_ = 0;
};

/// One open serial port that no other program has; closed at the end. What fails gives a system
/// error number, 0 for success.
class SerialPort {
public:
    explicit SerialPort(const Clock& clock) : clock_(clock) {}
    ~SerialPort();
    SerialPort(const SerialPort&) = delete;
    SerialPort& operator=(const SerialPort&) = delete;

    /// Opens the port called `name`, once; `EBUSY` when another program has it.
    [[nodiscard]] int open(const std::string& name);

    /// Sets `baud`, 8 data bits, no parity, 1 stop bit, no flow control.
    [[nodiscard]] int set_rate(int baud);

    /// The speed at which the port runs, baud, as rounded by its driver; 0 when it cannot tell.
    [[nodiscard]] int rate() const;

    /// Writes all of `bytes` within `time_out`, `ETIMEDOUT` when the port did not take all.
    [[nodiscard]] int write(std::span<const Byte> bytes, std::chrono::milliseconds time_out);

    /// Reads until `bytes` is full or `time_out` is over; puts the number that came into `read`.
    /// Fewer bytes are no error; a port that has gone is.
    [[nodiscard]] int read(std::span<Byte> bytes, std::chrono::milliseconds time_out,
                           std::size_t& read);

    /// Drops what waits to be sent and what has come.
    [[nodiscard]] int flush();

    /// Puts the number of bytes that have come and wait into `count`.
    [[nodiscard]] int waiting(std::size_t& count) const;

private:
    /// Frees what libserialport allocated for a port.
    struct Free {
        void operator()(sp_port* port) const;
    };

    [[nodiscard]] int wait_for(short events, std::chrono::nanoseconds deadline) const;

    const Clock& clock_;
    std::unique_ptr<sp_port, Free> port_;
    int handle_ = -1; ///< file descriptor of the port once it is ours, else -1
};

} // namespace kv408
