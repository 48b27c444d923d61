#include "link/library_bridge.h"

#include <algorithm>
#include <array>
#include <bit>
#include <sstream>

#include "host/shown_text.h"
#include "link/device_link.h"
#include "link/instrument_serial.h"
#ifndef _WIN32
#include "link/usb_diagnosis.h"
#endif

namespace kv408 {

LibraryBridge::LibraryBridge(const std::string& name) : name_(name), library_(name) {
    if (!library_.problem().empty()) {
        trouble_ = "The bridge library " + shown_line(name_) +
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

std::string LibraryBridge::diagnosis() {
    std::string text = trouble_.empty() ? listed_devices() : trouble_ + "\n";
#ifndef _WIN32
    if (!trouble_.empty()) {
        text.append("As long as it is there, the kernel's serial ports are not used.\n");
    }
    text.append("\n").append(usb_diagnosis(trouble_.empty() ? Way::library : Way::no_library));
#endif
    return text;
}

std::string LibraryBridge::listed_devices() {
    constexpr Dword most_listed =
        100; // more than USB has room for: such a count is not to be believed
    Dword count = 0;
    std::ostringstream text;
    text << "The bridge library " << name_ << " is used. ";
    if (const BridgeStatus status = SI_GetNumDevices(count); status != si_success) {
        text << "It cannot count its devices: it fails with status " << status << ".\n";
        return text.str();
    }
    text << "Devices that it lists: " << count << ".\n";
    for (Dword index = 0; index < std::min(count, most_listed); ++index) {
        std::array<Byte, product_string_size> buffer = {};
        const bool told = SI_GetProductString(index, buffer, si_return_serial_number) == si_success;
        const std::string serial = bytestostring(buffer);
        text << "Serial number " << (told ? shown_line(serial) : "unreadable") << ": "
             << (is_instrument(serial) ? "an instrument.\n" : "no instrument.\n");
    }
    return text.str();
}

BridgeStatus LibraryBridge::SI_GetNumDevices(Dword& count) {
    return trouble_.empty() ? functions_.SI_GetNumDevices(&count) : si_failed;
}

BridgeStatus LibraryBridge::SI_GetProductString(Dword index,
                                                std::span<Byte, product_string_size> text,
                                                Dword option) {
    return trouble_.empty() ? functions_.SI_GetProductString(index, text.data(), option)
                            : si_failed;
}

BridgeStatus LibraryBridge::SI_Open(Dword index, Handle& handle) {
    return trouble_.empty() ? functions_.SI_Open(index, &handle) : si_failed;
}

BridgeStatus LibraryBridge::SI_Close(Handle handle) {
    return trouble_.empty() ? functions_.SI_Close(handle) : si_failed;
}

BridgeStatus LibraryBridge::SI_SetBaudRate(Handle handle, Dword baud_rate) {
    return trouble_.empty() ? functions_.SI_SetBaudRate(handle, baud_rate) : si_failed;
}

BridgeStatus LibraryBridge::SI_SetTimeouts(Dword read_ms, Dword write_ms) {
    return trouble_.empty() ? functions_.SI_SetTimeouts(read_ms, write_ms) : si_failed;
}

BridgeStatus LibraryBridge::SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) {
    return trouble_.empty() ? functions_.SI_FlushBuffers(handle, transmit, receive) : si_failed;
}

BridgeStatus LibraryBridge::SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) {
    if (!trouble_.empty()) {
        return si_failed;
    }
    // The library's function takes a pointer to bytes that it could change, but does not.
    return functions_.SI_Write(handle, const_cast<Byte*>(bytes.data()),
                               static_cast<Dword>(bytes.size()), &written, nullptr);
}

BridgeStatus LibraryBridge::SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) {
    return trouble_.empty() ? functions_.SI_Read(handle, bytes.data(),
                                                 static_cast<Dword>(bytes.size()), &read, nullptr)
                            : si_failed;
}

BridgeStatus LibraryBridge::SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) {
    return trouble_.empty() ? functions_.SI_CheckRXQueue(handle, &waiting, &queue_status)
                            : si_failed;
}

} // namespace kv408
