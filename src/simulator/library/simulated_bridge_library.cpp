// The ten functions of the bridge library, answered by a simulated instrument in real time. The
// environment variable KV408_SIMULATED_FLASH names the file that keeps the flash memory; without
// it the memory lasts as long as the process. Where KV408_SIMULATED_SILENCE is set the signals have
// no noise, and every sweep of one set-up is the same.

#include "host/system_clock.h"
#include "host/system_files.h"
#include "link/bridge_functions.h"
#include "simulator/simulation.h"

#include <cstdlib>
#include <cstring>
#include <memory>
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

/// Clock, files and simulation of the process, in the order in which they need each other, and the
/// handle of the open device.
struct Owner {
    kv408::SystemClock clock;
    kv408::SystemFiles files;
    kv408::simulator::Simulation simulation;
    std::unique_ptr<char> token; // its address is the handle; none while nothing is open

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
Owner& owner() {
    static Owner owner;
    return owner;
}

kv408::Bridge& bridge() {
    return owner().simulation.bridge();
}

bool is_open(Handle handle) {
    return handle != nullptr && handle == owner().token.get();
}

/// Hands the count of an operation out; its status.
BridgeStatus put(const kv408::Counted& counted, Dword* count) {
    *count = counted.count;
    return counted.status;
}

} // namespace

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_GetNumDevices(Dword* count) {
    return count == nullptr ? kv408::bridge_failed : put(bridge().count_devices(), count);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_GetProductString(Dword index, void* text,
                                                                Dword option) {
    if (text == nullptr || option != kv408::si_return_serial_number) {
        return kv408::bridge_failed;
    }
    const kv408::SerialNumber serial = bridge().serial_number(index);
    if (serial.status == kv408::bridge_success) {
        // Only the text and its zero are written: the caller's buffer may be no longer.
        std::memcpy(text, serial.text.c_str(), serial.text.size() + 1);
    }
    return serial.status;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Open(Dword index, Handle* handle) {
    if (handle == nullptr) {
        return kv408::bridge_failed;
    }
    const BridgeStatus status = bridge().open(index);
    if (status == kv408::bridge_success) {
        // Made before the old one goes, so that its address is another one.
        owner().token = std::make_unique<char>();
        *handle = owner().token.get();
    }
    return status;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Close(Handle handle) {
    return is_open(handle) ? bridge().close() : kv408::bridge_failed;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_SetBaudRate(Handle handle, Dword baud_rate) {
    return is_open(handle) ? bridge().set_speed(baud_rate) : kv408::bridge_failed;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_SetTimeouts(Dword read_ms, Dword /*write_ms*/) {
    return bridge().set_time_out(read_ms);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_FlushBuffers(Handle handle, Byte /*transmit*/,
                                                            Byte receive) {
    if (!is_open(handle)) {
        return kv408::bridge_failed;
    }
    // What is written has gone when the call returns.
    return receive == 0 ? kv408::bridge_success : bridge().flush();
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Write(Handle handle, void* bytes, Dword count,
                                                     Dword* written, void* /*overlapped*/) {
    if (bytes == nullptr || written == nullptr || !is_open(handle)) {
        return kv408::bridge_failed;
    }
    const BridgeStatus status = bridge().write(std::span(static_cast<const Byte*>(bytes), count));
    *written = status == kv408::bridge_success ? count : 0;
    return status;
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_Read(Handle handle, void* bytes, Dword count,
                                                    Dword* read, void* /*overlapped*/) {
    if (bytes == nullptr || read == nullptr || !is_open(handle)) {
        return kv408::bridge_failed;
    }
    return put(bridge().read(std::span(static_cast<Byte*>(bytes), count)), read);
}

KV408_EXPORT BridgeStatus KV408_BRIDGE_CALL SI_CheckRXQueue(Handle handle, Dword* waiting,
                                                            Dword* queue_status) {
    if (waiting == nullptr || queue_status == nullptr || !is_open(handle)) {
        return kv408::bridge_failed;
    }
    *queue_status = 0;
    return put(bridge().waiting(), waiting);
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
