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
    if (*count > 0) {
        return kv408::bridge_success;
    }
    const kv408::Counted devices = bridge().count_devices();
    *count = devices.count;
    return devices.status;
}

KV408_EXPORT BridgeStatus SI_GetProductString(Dword index, void* text, Dword /*option*/) {
    if (foreign_devices() > 0) {
        owner().clock.sleep(6ms);
        const std::string name = "foreign" + std::to_string(index);
        std::copy_n(name.c_str(), name.size() + 1, static_cast<char*>(text));
        return kv408::bridge_success;
    }
    const kv408::SerialNumber serial = bridge().serial_number(index);
    std::copy_n(serial.text.c_str(), serial.text.size() + 1, static_cast<char*>(text));
    return serial.status;
}

KV408_EXPORT BridgeStatus SI_Open(Dword index, Handle* handle) {
    note("open");
    *handle = &owner();
    return bridge().open(index);
}

KV408_EXPORT BridgeStatus SI_Close(Handle /*handle*/) {
    note("close");
    return bridge().close();
}

KV408_EXPORT BridgeStatus SI_SetBaudRate(Handle /*handle*/, Dword baud_rate) {
    return bridge().set_speed(baud_rate);
}

KV408_EXPORT BridgeStatus SI_SetTimeouts(Dword read_ms, Dword /*write_ms*/) {
    return bridge().set_time_out(read_ms);
}

KV408_EXPORT BridgeStatus SI_FlushBuffers(Handle /*handle*/, Byte /*transmit*/, Byte /*receive*/) {
    return bridge().flush();
}

KV408_EXPORT BridgeStatus SI_Write(Handle /*handle*/, void* bytes, Dword count, Dword* written,
                                   void* /*overlapped*/) {
    if (count == 8 && static_cast<const Byte*>(bytes)[1] == kv408::command::set_trigger) {
        note("set up");
    }
    *written = count;
    return bridge().write(std::span(static_cast<const Byte*>(bytes), count));
}

KV408_EXPORT BridgeStatus SI_Read(Handle /*handle*/, void* bytes, Dword count, Dword* read,
                                  void* /*overlapped*/) {
    while (has_begun("KV408_HOSTILE_BLOCK")) {
        owner().clock.sleep(24h);
    }
    if (has_begun("KV408_HOSTILE_THROW")) {
        throw std::runtime_error("the bridge library lost its head");
    }
    const kv408::Counted done = bridge().read(std::span(static_cast<Byte*>(bytes), count));
    *read = done.count;
    return done.status;
}

KV408_EXPORT BridgeStatus SI_CheckRXQueue(Handle /*handle*/, Dword* waiting, Dword* queue_status) {
    const kv408::Counted bytes = bridge().waiting();
    *waiting = bytes.count;
    *queue_status = 0;
    return bytes.status;
}
