// The ten functions of the bridge library, answered by a simulated instrument in real time. The
// environment variable KV408_SIMULATED_FLASH names the file that keeps the flash memory; without
// it the memory lasts as long as the process. Where KV408_SIMULATED_SILENCE is set the signals have
// no noise, and every sweep of one set-up is the same.

#include "host/system_clock.h"
#include "host/system_files.h"
#include "link/bridge_functions.h"
#include "simulator/simulation.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>
#include <type_traits>

#ifdef _WIN32
#define KV408_EXPORT extern "C" __declspec(dllexport)
#else
#define KV408_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

using kv408::BridgeStatus;
using kv408::Byte;
using kv408::Dword;
using kv408::Handle;

/// Clock, files and simulation of the process, in the order in which they need each other.
struct Owner {
    kv408::SystemClock clock;
    kv408::SystemFiles files;
    kv408::simulator::Simulation simulation;

    Owner() : simulation(clock, flash_place(files)) {
        if (std::getenv("KV408_SIMULATED_SILENCE") != nullptr) {
            kv408::simulator::silence(simulation.bench());
        }
    }

    static kv408::simulator::FlashPlace flash_place(kv408::Files& files) {
        const char* const name = std::getenv("KV408_SIMULATED_FLASH");
        return name == nullptr ? kv408::simulator::FlashPlace()
                               : kv408::simulator::FlashPlace{.files = &files, .path = name};
    }
};

/// The functions have no place of their own to keep the simulation in: it lives with the process.
kv408::Bridge& bridge() {
    static Owner owner;
    return owner.simulation.bridge();
}

} // namespace

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_GetNumDevices(Dword* count) {
    return count == nullptr ? kv408::si_failed : bridge().SI_GetNumDevices(*count);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_GetProductString(Dword index, void* text,
                                                                Dword option) {
    if (text == nullptr) {
        return kv408::si_failed;
    }
    std::array<Byte, kv408::product_string_size> buffer{};
    const BridgeStatus status = bridge().SI_GetProductString(index, buffer, option);
    if (status == kv408::si_success) {
        // Only the text and its zero: a caller may know that its strings are short.
        const Byte* const start = buffer.data();
        const Byte* const zero = std::find(start, start + buffer.size() - 1, 0);
        std::copy(start, zero + 1, static_cast<Byte*>(text));
    }
    return status;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Open(Dword index, Handle* handle) {
    return handle == nullptr ? kv408::si_failed : bridge().SI_Open(index, *handle);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Close(Handle handle) {
    return bridge().SI_Close(handle);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_SetBaudRate(Handle handle, Dword baud_rate) {
    return bridge().SI_SetBaudRate(handle, baud_rate);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_SetTimeouts(Dword read_ms, Dword write_ms) {
    return bridge().SI_SetTimeouts(read_ms, write_ms);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_FlushBuffers(Handle handle, Byte transmit,
                                                            Byte receive) {
    return bridge().SI_FlushBuffers(handle, transmit, receive);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Write(Handle handle, void* bytes, Dword count,
                                                     Dword* written, void* /*overlapped*/) {
    if (bytes == nullptr || written == nullptr) {
        return kv408::si_failed;
    }
    return bridge().SI_Write(handle, std::span(static_cast<const Byte*>(bytes), count), *written);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Read(Handle handle, void* bytes, Dword count,
                                                    Dword* read, void* /*overlapped*/) {
    if (bytes == nullptr || read == nullptr) {
        return kv408::si_failed;
    }
    return bridge().SI_Read(handle, std::span(static_cast<Byte*>(bytes), count), *read);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_CheckRXQueue(Handle handle, Dword* waiting,
                                                            Dword* queue_status) {
    if (waiting == nullptr || queue_status == nullptr) {
        return kv408::si_failed;
    }
    return bridge().SI_CheckRXQueue(handle, *waiting, *queue_status);
}

namespace {

// What a program loads has to be what is exported here.
static_assert(std::is_same_v<decltype(&::SI_GetNumDevices),
                             decltype(kv408::BridgeFunctions::SI_GetNumDevices)>);
static_assert(std::is_same_v<decltype(&::SI_GetProductString),
                             decltype(kv408::BridgeFunctions::SI_GetProductString)>);
static_assert(std::is_same_v<decltype(&::SI_Open), decltype(kv408::BridgeFunctions::SI_Open)>);
static_assert(std::is_same_v<decltype(&::SI_Close), decltype(kv408::BridgeFunctions::SI_Close)>);
static_assert(
    std::is_same_v<decltype(&::SI_SetBaudRate), decltype(kv408::BridgeFunctions::SI_SetBaudRate)>);
static_assert(
    std::is_same_v<decltype(&::SI_SetTimeouts), decltype(kv408::BridgeFunctions::SI_SetTimeouts)>);
static_assert(std::is_same_v<decltype(&::SI_FlushBuffers),
                             decltype(kv408::BridgeFunctions::SI_FlushBuffers)>);
static_assert(std::is_same_v<decltype(&::SI_Write), decltype(kv408::BridgeFunctions::SI_Write)>);
static_assert(std::is_same_v<decltype(&::SI_Read), decltype(kv408::BridgeFunctions::SI_Read)>);
static_assert(std::is_same_v<decltype(&::SI_CheckRXQueue),
                             decltype(kv408::BridgeFunctions::SI_CheckRXQueue)>);

} // namespace
