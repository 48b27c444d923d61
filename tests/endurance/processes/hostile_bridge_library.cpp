// A bridge library that behaves badly when it is told to, over the simulated instrument. The
// environment says what it does; what is to begin while the program runs begins once a file of the
// given name is there:
//   KV408_HOSTILE_LOG=<file>      gets a line for each opening, closing and trigger set-up
//   KV408_HOSTILE_BLOCK=<file>    no reading comes back
//   KV408_HOSTILE_THROW=<file>    reading throws a C++ exception
//   KV408_HOSTILE_OFF=<file>      the instrument was switched off and on again; the file goes
//   KV408_HOSTILE_FOREIGN=<n>     n devices that are no instrument; each takes 6 ms to list

#include "host/system_clock.h"
#include "link/bridge_functions.h"
#include "link/commands.h"
#include "simulator/simulation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <span>
#include <stdexcept>
#include <string>

#define KV408_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using kv408::BridgeStatus;
using kv408::Byte;
using kv408::Dword;
using kv408::Handle;
using namespace std::chrono_literals;

std::string told(const char* variable) {
    const char* const value = std::getenv(variable);
    return value == nullptr ? std::string() : value;
}

/// True once the file that `variable` names is there.
bool has_begun(const char* variable) {
    const std::string file = told(variable);
    std::error_code error;
    return !file.empty() && std::filesystem::exists(file, error);
}

void note(const char* line) {
    if (const std::string file = told("KV408_HOSTILE_LOG"); !file.empty()) {
        std::ofstream(file, std::ios::app) << line << "\n";
    }
}

/// Clock and simulation of the process, in the order in which they need each other.
struct Owner {
    kv408::SystemClock clock;
    kv408::simulator::Simulation simulation{clock};
};

Owner& owner() {
    static Owner the_owner;
    return the_owner;
}

kv408::Bridge& bridge() {
    kv408::simulator::Simulation& simulation = owner().simulation;
    if (has_begun("KV408_HOSTILE_OFF")) {
        simulation.bench().faults.no_power = true;
        simulation.notice_faults();
        simulation.bench().faults.no_power = false;
        simulation.notice_faults();
        std::filesystem::remove(told("KV408_HOSTILE_OFF"));
    }
    return simulation.bridge();
}

Dword foreign_devices() {
    const std::string number = told("KV408_HOSTILE_FOREIGN");
    return number.empty() ? 0 : static_cast<Dword>(std::stoul(number));
}

} // namespace

KV408_EXPORT BridgeStatus SI_GetNumDevices(Dword* count) {
    *count = foreign_devices();
    return *count > 0 ? kv408::si_success : bridge().SI_GetNumDevices(*count);
}

KV408_EXPORT BridgeStatus SI_GetProductString(Dword index, void* text, Dword option) {
    if (foreign_devices() > 0) {
        owner().clock.sleep(6ms);
        const std::string name = "foreign" + std::to_string(index);
        std::copy_n(name.c_str(), name.size() + 1, static_cast<char*>(text));
        return kv408::si_success;
    }
    return bridge().SI_GetProductString(index,
                                        std::span<Byte, kv408::product_string_size>(
                                            static_cast<Byte*>(text), kv408::product_string_size),
                                        option);
}

KV408_EXPORT BridgeStatus SI_Open(Dword index, Handle* handle) {
    note("open");
    return bridge().SI_Open(index, *handle);
}

KV408_EXPORT BridgeStatus SI_Close(Handle handle) {
    note("close");
    return bridge().SI_Close(handle);
}

KV408_EXPORT BridgeStatus SI_SetBaudRate(Handle handle, Dword baud_rate) {
    return bridge().SI_SetBaudRate(handle, baud_rate);
}

KV408_EXPORT BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) {
    return bridge().SI_SetTimeouts(read_ms, write_ms);
}

KV408_EXPORT BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) {
    return bridge().SI_FlushBuffers(handle, transmit, receive);
}

KV408_EXPORT BridgeStatus SI_Write(Handle handle, void* bytes, Dword count, Dword* written,
                                   void* /*overlapped*/) {
    if (count == 8 && static_cast<const Byte*>(bytes)[1] == kv408::command::set_trigger) {
        note("set up");
    }
    return bridge().SI_Write(handle, std::span(static_cast<const Byte*>(bytes), count), *written);
}

KV408_EXPORT BridgeStatus SI_Read(Handle handle, void* bytes, Dword count, Dword* read,
                                  void* /*overlapped*/) {
    while (has_begun("KV408_HOSTILE_BLOCK")) {
        owner().clock.sleep(24h);
    }
    if (has_begun("KV408_HOSTILE_THROW")) {
        throw std::runtime_error("the bridge library lost its head");
    }
    return bridge().SI_Read(handle, std::span(static_cast<Byte*>(bytes), count), *read);
}

KV408_EXPORT BridgeStatus SI_CheckRXQueue(Handle handle, Dword* waiting, Dword* queue_status) {
    return bridge().SI_CheckRXQueue(handle, *waiting, *queue_status);
}
