#pragma once

// The ten functions that a bridge library exports, as C sees them. They follow the system's
// calling convention.

#include "link/bridge.h"

#ifdef _WIN32
#define KV408_BRIDGE_CALL __stdcall
#else
#define KV408_BRIDGE_CALL
#endif

namespace kv408 {

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
