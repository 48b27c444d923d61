// A bridge library under test that notes how its functions are called.

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "link/bridge_functions.h"

#ifdef _WIN32
#define KV408_EXPORT extern "C" __declspec(dllexport)
#else
#define KV408_EXPORT extern "C" __attribute__((visibility("default")))
#endif

using kv408::BridgeStatus;
using kv408::Byte;
using kv408::Dword;
using kv408::Handle;

namespace {

struct Notes {
    std::vector<std::string>* into = nullptr;
};

/// Where the calls are noted; a library's functions have no other place for it.
Notes& notes() {
    static Notes the_notes;
    return the_notes;
}

BridgeStatus note(const std::string& call) {
    if (notes().into != nullptr) {
        notes().into->push_back(call);
    }
    return kv408::bridge_success;
}

std::string number(Handle handle) {
    return std::to_string(reinterpret_cast<std::uintptr_t>(handle));
}

std::string number(Dword value) {
    return std::to_string(value);
}

const char* overlap(const void* overlapped) {
    return overlapped == nullptr ? ", no overlap" : ", overlap";
}

} // namespace

KV408_EXPORT void note_into(std::vector<std::string>* list) {
    notes().into = list;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_GetNumDevices(Dword* count) {
    *count = 3;
    return note("SI_GetNumDevices");
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_GetProductString(Dword index, void* text,
                                                                Dword option) {
    std::memset(text, 'x', kv408::product_string_size); // all of it, and no zero
    return note("SI_GetProductString " + number(index) + " " + number(option));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Open(Dword index, Handle* handle) {
    *handle = std::bit_cast<Handle>(std::uintptr_t{4711}); // whatever the library likes
    return note("SI_Open " + number(index));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Close(Handle handle) {
    return note("SI_Close " + number(handle));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_SetBaudRate(Handle handle, Dword baud_rate) {
    return note("SI_SetBaudRate " + number(handle) + ": " + number(baud_rate));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_SetTimeouts(Dword read_ms, Dword write_ms) {
    return note("SI_SetTimeouts " + number(read_ms) + " " + number(write_ms));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_FlushBuffers(Handle handle, Byte transmit,
                                                            Byte receive) {
    return note("SI_FlushBuffers " + number(handle) + ": " + number(Dword{transmit}) + " " +
                number(Dword{receive}));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Write(Handle handle, void* bytes, Dword count,
                                                     Dword* written, void* overlapped) {
    *written = count;
    return note("SI_Write " + number(handle) + ": " + number(count) + " bytes from " +
                number(Dword{*static_cast<const Byte*>(bytes)}) + overlap(overlapped));
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Read(Handle handle, void* bytes, Dword count,
                                                    Dword* read, void* overlapped) {
    *static_cast<Byte*>(bytes) = 77;
    *read = 1;
    note("SI_Read " + number(handle) + ": " + number(count) + " bytes" + overlap(overlapped));
    return kv408::bridge_read_timed_out;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_CheckRXQueue(Handle handle, Dword* waiting,
                                                            Dword* queue_status) {
    *waiting = 1300;
    *queue_status = 0;
    return note("SI_CheckRXQueue " + number(handle));
}
