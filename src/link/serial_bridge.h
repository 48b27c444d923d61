#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "link/bridge.h"
#include "link/serial_port.h"

namespace kv408 {

/// The ten operations over the kernel's driver for USB serial ports, for systems without the
/// bridge library. The devices are the ports whose USB device has a serial number, in the system's
/// order, as the last `SI_GetNumDevices` found them. One is open at a time, and no other program
/// can have it meanwhile. After a failure `trouble()` says why.
class SerialBridge : public Bridge {
public:
    /// Takes its time-outs on `clock`; `log` gets a line for the speed that a driver rounds to or
    /// does not tell. `loaders_words` say why there is no bridge library, for the diagnosis; empty
    /// leaves them out.
    SerialBridge(const Clock& clock, std::ostream& log, std::string loaders_words = {})
        : clock_(clock), log_(log), loaders_words_(std::move(loaders_words)) {}

    BridgeStatus SI_GetNumDevices(Dword& count) override;
    BridgeStatus SI_GetProductString(Dword index, std::span<Byte, product_string_size> text,
                                     Dword option) override;
    BridgeStatus SI_Open(Dword index, Handle& handle) override;
    BridgeStatus SI_Close(Handle handle) override;
    BridgeStatus SI_SetBaudRate(Handle handle, Dword baud_rate) override;
    BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) override;
    BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) override;
    BridgeStatus SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) override;
    BridgeStatus SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) override;
    BridgeStatus SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) override;
    [[nodiscard]] std::string trouble() const override { return trouble_; }
    [[nodiscard]] std::string diagnosis() override;

    /// The speed at which the open port runs, baud; 0 before `SI_SetBaudRate` and when the driver
    /// does not tell.
    [[nodiscard]] Dword rate() const { return rate_; }

private:
    /// Runs `action(port)` on the open port if `handle` is its handle; the error it gives becomes a
    /// status.
    template <typename Action>
    BridgeStatus on_port(Handle handle, Action action);
    /// Logs the open port's speed where it is not `wanted`, baud.
    void log_other_rate(Dword wanted);

    const Clock& clock_;
    std::ostream& log_;
    std::string loaders_words_;
    std::vector<SerialPortEntry> entries_;
    std::unique_ptr<SerialPort> port_; // its address is the handle; null while nothing is open
    std::string port_name_;
    Dword rate_ = 0;
    std::chrono::milliseconds read_time_out_{1000};
    std::chrono::milliseconds write_time_out_{1000};
    std::string trouble_;
};

} // namespace kv408
