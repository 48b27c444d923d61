#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "link/bridge.h"
#include "link/posix/serial_port.h"

namespace kv408 {

/// The bridge over the kernel's driver for USB serial ports, for systems without the bridge
/// library. The devices are the ports whose USB device has a serial number, in the system's order,
/// as they were counted last. No other program can have the open one meanwhile. After a failure
/// `trouble()` says why.
class SerialBridge : public Bridge {
public:
    /// Takes its time-outs on `clock`; `log` gets a line for the speed that a driver rounds to or
    /// does not tell.
    SerialBridge(const Clock& clock, std::ostream& log) : clock_(clock), log_(log) {}

    Counted count_devices() override;
    SerialNumber serial_number(std::uint32_t index) override;
    BridgeStatus open(std::uint32_t index) override;
    BridgeStatus close() override;
    BridgeStatus set_speed(std::uint32_t baud) override;
    BridgeStatus set_time_out(std::uint32_t milliseconds) override;
    BridgeStatus flush() override;
    BridgeStatus write(std::span<const Byte> bytes) override;
    Counted read(std::span<Byte> bytes) override;
    Counted waiting() override;
    [[nodiscard]] std::string trouble() const override { return trouble_; }

    /// The speed at which the open port runs, baud; 0 before `set_speed` and when the driver
    /// does not tell.
    [[nodiscard]] std::uint32_t rate() const { return rate_; }

private:
    /// Runs `action(port)` on the open port, if there is one; the error it gives becomes a status.
    template <typename Action>
    BridgeStatus on_port(Action action);
    /// Logs the open port's speed where it is not `wanted`, baud.
    void log_other_rate(std::uint32_t wanted);

    const Clock& clock_;
    std::ostream& log_;
    std::vector<SerialPortEntry> entries_;
    std::unique_ptr<SerialPort> port_; // null while nothing is open
    std::string port_name_;
    std::uint32_t rate_ = 0;
    std::chrono::milliseconds time_out_{1000};
    std::string trouble_;
};

} // namespace kv408
