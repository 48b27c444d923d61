#include "link/library_bridge.h"

#include <algorithm>
#include <array>

#include "host/shown_text.h"

namespace kv408 {

LibraryBridge::LibraryBridge(const std::string& name) : name_(name), library_(name) {
    if (!library_.problem().empty()) {
        trouble_ = "The bridge library " + shown_line(name) +
                   " could not be loaded: " + shown_line(library_.problem());
        return;
    }
    look_up("SI_GetNumDevices", functions_.SI_GetNumDevices);
    look_up("SI_GetProductString", functions_.SI_GetProductString);
    look_up("SI_Open", functions_.SI_Open);
    look_up("SI_Close", functions_.SI_Close);
    look_up("SI_SetBaudRate", functions_.SI_SetBaudRate);
    look_up("SI_SetTimeouts", functions_.SI_SetTimeouts);
    look_up("SI_FlushBuffers", functions_.SI_FlushBuffers);
    look_up("SI_Write", functions_.SI_Write);
    look_up("SI_Read", functions_.SI_Read);
    look_up("SI_CheckRXQueue", functions_.SI_CheckRXQueue);
}

template <typename Function>
void LibraryBridge::look_up(const char* symbol, Function& function) {
    void* const address = library_.address(symbol);
    function = std::bit_cast<Function>(address);
    if (address == nullptr) {
        trouble_ += trouble_.empty() ? "The bridge library " + name_ + " lacks the function "
                                     : std::string(", ");
        trouble_ += symbol;
    }
}

Counted LibraryBridge::count_devices() {
    Dword count = 0;
    const BridgeStatus status = call(functions_.SI_GetNumDevices, &count);
    return {status, count};
}

SerialNumber LibraryBridge::serial_number(std::uint32_t index) {
    std::array<Byte, product_string_size> buffer = {};
    const BridgeStatus status =
        call(functions_.SI_GetProductString, index, buffer.data(), si_return_serial_number);
    return {status, bytestostring(buffer)};
}

BridgeStatus LibraryBridge::open(std::uint32_t index) {
    Handle handle = nullptr;
    const BridgeStatus status = call(functions_.SI_Open, index, &handle);
    if (status == bridge_success) {
        devhandle_ = handle;
    }
    return status;
}

BridgeStatus LibraryBridge::close() {
    return call(functions_.SI_Close, devhandle_);
}

BridgeStatus LibraryBridge::set_speed(std::uint32_t baud) {
    return call(functions_.SI_SetBaudRate, devhandle_, baud);
}

BridgeStatus LibraryBridge::set_time_out(std::uint32_t milliseconds) {
    return call(functions_.SI_SetTimeouts, milliseconds, milliseconds);
}

BridgeStatus LibraryBridge::flush() {
    return call(functions_.SI_FlushBuffers, devhandle_, Byte{1}, Byte{1});
}

BridgeStatus LibraryBridge::write(std::span<const Byte> bytes) {
    Dword written = 0;
    // The library's function takes a pointer to bytes that it could change, but does not.
    return call(functions_.SI_Write, devhandle_, const_cast<Byte*>(bytes.data()),
                static_cast<Dword>(bytes.size()), &written, nullptr);
}

Counted LibraryBridge::read(std::span<Byte> bytes) {
    Dword count = 0;
    const BridgeStatus status = call(functions_.SI_Read, devhandle_, bytes.data(),
                                     static_cast<Dword>(bytes.size()), &count, nullptr);
    return {status, count};
}

Counted LibraryBridge::waiting() {
    Dword count = 0;
    Dword queue_status = 0;
    const BridgeStatus status = call(functions_.SI_CheckRXQueue, devhandle_, &count, &queue_status);
    return {status, count};
}

std::string bytestostring(std::span<const Byte> buffer) {
    constexpr std::size_t longest = 256;
    std::string text;
    for (const Byte byte : buffer.first(std::min(buffer.size(), longest))) {
        if (byte == 0) {
            break;
        }
        text.push_back(std::bit_cast<char>(byte));
    }
    return text;
}

} // namespace kv408
