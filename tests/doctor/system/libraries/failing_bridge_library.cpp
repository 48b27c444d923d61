// A bridge library under test that has all ten functions, each of which fails with status 2.

#include "link/bridge_functions.h"

#define KV408_EXPORT extern "C" __attribute__((visibility("default")))

using kv408::BridgeStatus;
using kv408::Byte;
using kv408::Dword;
using kv408::Handle;

namespace {

constexpr BridgeStatus failure = 2;

} // namespace

KV408_EXPORT BridgeStatus SI_GetNumDevices(Dword* /*count*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_GetProductString(Dword /*index*/, void* /*text*/, Dword /*option*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_Open(Dword /*index*/, Handle* /*handle*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_Close(Handle /*handle*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_SetBaudRate(Handle /*handle*/, Dword /*baud_rate*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_SetTimeouts(Dword /*read_ms*/, Dword /*write_ms*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_FlushBuffers(Handle /*handle*/, Byte /*transmit*/, Byte /*receive*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_Write(Handle /*handle*/, void* /*bytes*/, Dword /*count*/,
                                   Dword* /*written*/, void* /*overlapped*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_Read(Handle /*handle*/, void* /*bytes*/, Dword /*count*/,
                                  Dword* /*read*/, void* /*overlapped*/) {
    return failure;
}

KV408_EXPORT BridgeStatus SI_CheckRXQueue(Handle /*handle*/, Dword* /*waiting*/,
                                          Dword* /*queue_status*/) {
    return failure;
}
