#pragma once

// The ten functions that a bridge library exports, as C sees them. They follow the system's
// calling convention.

#include <cstddef>
#include <cstdint>

#include "link/bridge.h"

#ifdef _WIN32
#define KV408_BRIDGE_CALL __stdcall
#else
#define KV408_BRIDGE_CALL
#endif

namespace kv408 {

using Handle = void*;        ///< an open device, as wide as a pointer
using Dword = std::uint32_t; ///< 32-bit unsigned count or index

// The library's functions take them in these widths.
static_assert(sizeof(BridgeStatus) == 4 && sizeof(Handle) == sizeof(std::uintptr_t) &&
              sizeof(Dword) == 4 && sizeof(Byte) == 1);

/// Option of `SI_GetProductString` that asks for the serial-number string.
inline constexpr Dword si_return_serial_number = 0;

/// Length of the buffer that `SI_GetProductString` fills: 256 characters and the ending zero.
inline constexpr std::size_t product_string_size = 257;

/// The exported functions' types, named after them; all return a status.
struct BridgeFunctions {
    BridgeStatus(KV408_BRIDGE_CALL* SI_GetNumDevices)(Dword* count) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_GetProductString)(Dword index, void* text,
                                                         Dword option) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_Open)(Dword index, Handle* handle) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_Close)(Handle handle) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_SetBaudRate)(Handle handle, Dword baud_rate) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_SetTimeouts)(Dword read_ms, Dword write_ms) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_FlushBuffers)(Handle handle, Byte transmit,
                                                     Byte receive) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_Write)(Handle handle, void* bytes, Dword count,
                                              Dword* written, void* overlapped) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_Read)(Handle handle, void* bytes, Dword count, Dword* read,
                                             void* overlapped) = nullptr;
    BridgeStatus(KV408_BRIDGE_CALL* SI_CheckRXQueue)(Handle handle, Dword* waiting,
                                                     Dword* queue_status) = nullptr;
};

} // namespace kv408
