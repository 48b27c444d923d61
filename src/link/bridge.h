#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace kv408 {

using BridgeStatus = std::int32_t; ///< status of a bridge operation: 0 success, 13 read timed out
using Handle = void*;              ///< an open device, as wide as a pointer
using Dword = std::uint32_t;       ///< 32-bit unsigned count or index
using Byte = std::uint8_t;

// The library's functions take them in these widths.
static_assert(sizeof(BridgeStatus) == 4 && sizeof(Handle) == sizeof(std::uintptr_t) &&
              sizeof(Dword) == 4 && sizeof(Byte) == 1);

/// Status values that the program tests; every other one is a general failure.
inline constexpr BridgeStatus si_success = 0;
inline constexpr BridgeStatus si_read_timed_out = 13;
/// Status that our own bridges give for an operation they cannot do.
inline constexpr BridgeStatus si_failed = 255;

/// Option of `SI_GetProductString` that asks for the serial-number string.
inline constexpr Dword si_return_serial_number = 0;

/// Length of the buffer that `SI_GetProductString` fills: 256 characters and the ending zero.
inline constexpr std::size_t product_string_size = 257;

/// The ten operations of the USB-to-UART bridge through which the instrument is reached. All
/// block, none throws; each returns its status. The instrument program knows only this.
class Bridge {
public:
    virtual ~Bridge() = default;

    /// Puts the number of attached devices into `count`.
    virtual BridgeStatus SI_GetNumDevices(Dword& count) = 0;

    /// Puts a zero-terminated text of device `index` (from 0) into `text`; `option` says which.
    virtual BridgeStatus SI_GetProductString(Dword index, std::span<Byte, product_string_size> text,
                                             Dword option) = 0;

    /// Opens device `index` (from 0) and puts its handle into `handle`.
    virtual BridgeStatus SI_Open(Dword index, Handle& handle) = 0;

    /// Closes the device.
    virtual BridgeStatus SI_Close(Handle handle) = 0;

    /// Sets the link speed in baud.
    virtual BridgeStatus SI_SetBaudRate(Handle handle, Dword baud_rate) = 0;

    /// Sets the time-outs, in milliseconds, of all later reads and writes.
    virtual BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) = 0;

    /// Empties the transmit queue (`transmit` 1) and the receive queue (`receive` 1).
    virtual BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) = 0;

    /// Writes `bytes`, puts the number written into `written`.
    virtual BridgeStatus SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) = 0;

    /// Reads up to `bytes.size()` bytes within the read time-out, puts their number into `read`.
    /// Status 13 when nothing arrived in that time.
    virtual BridgeStatus SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) = 0;

    /// Puts the number of received bytes that wait into `waiting`.
    virtual BridgeStatus SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) = 0;

    /// Why the bridge cannot work, in plain words for a message box; empty while nothing is known.
    [[nodiscard]] virtual std::string trouble() const { return {}; }

    /// Every device of this computer that could be the instrument, with what keeps the program from
    /// reaching it and what cures that, in lines for a person to read; empty where the bridge has
    /// nowhere to look. Looks anew each time, at the cost of some milliseconds; never throws.
    [[nodiscard]] virtual std::string diagnosis() { return {}; }
};

} // namespace kv408
