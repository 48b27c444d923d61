#include "link/serial_bridge.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <ostream>

#include "link/library_bridge.h"
#include "link/serial_trouble.h"
#include "link/usb_diagnosis.h"

namespace kv408 {

using std::chrono::milliseconds;

template <typename Action>
BridgeStatus SerialBridge::on_port(Handle handle, Action action) {
    if (port_ == nullptr || handle != port_.get()) {
        return si_failed;
    }
    const int error = action(*port_);
    if (error != 0) {
        trouble_ = serial_trouble(port_name_, error);
        return si_failed;
    }
    return si_success;
}

BridgeStatus SerialBridge::SI_GetNumDevices(Dword& count) {
    count = 0;
    auto entries = list_serial_ports();
    if (!entries) {
        trouble_ = "The system does not list its serial ports.";
        return si_failed;
    }
    entries_ = std::move(*entries);
    count = static_cast<Dword>(entries_.size());
    trouble_.clear();
    return si_success;
}

BridgeStatus SerialBridge::SI_GetProductString(Dword index,
                                               std::span<Byte, product_string_size> text,
                                               Dword option) {
    if (index >= entries_.size() || option != si_return_serial_number) {
        return si_failed;
    }
    const std::string& serial = entries_[index].serial;
    const std::size_t length = std::min(serial.size(), text.size() - 1);
    std::transform(serial.begin(), serial.begin() + static_cast<std::ptrdiff_t>(length),
                   text.begin(), [](char character) { return std::bit_cast<Byte>(character); });
    text[length] = 0;
    return si_success;
}

BridgeStatus SerialBridge::SI_Open(Dword index, Handle& handle) {
    if (port_ != nullptr || index >= entries_.size()) {
        return si_failed;
    }
    auto port = std::make_unique<SerialPort>(clock_);
    port_name_ = entries_[index].name;
    if (const int error = port->open(port_name_); error != 0) {
        trouble_ = serial_trouble(port_name_, error);
        return si_failed;
    }
    port_ = std::move(port);
    handle = port_.get();
    trouble_.clear();
    return si_success;
}

BridgeStatus SerialBridge::SI_Close(Handle handle) {
    if (port_ == nullptr || handle != port_.get()) {
        return si_failed;
    }
    port_.reset();
    rate_ = 0;
    return si_success;
}

BridgeStatus SerialBridge::SI_SetBaudRate(Handle handle, Dword baud_rate) {
    if (baud_rate == 0 || baud_rate > std::numeric_limits<int>::max()) {
        return si_failed;
    }
    return on_port(handle, [&](SerialPort& port) {
        const int error = port.set_rate(static_cast<int>(baud_rate));
        if (error == 0) {
            rate_ = static_cast<Dword>(port.rate());
            log_other_rate(baud_rate);
        }
        return error;
    });
}

void SerialBridge::log_other_rate(Dword wanted) {
    if (rate_ == wanted) {
        return;
    }
    log_ << port_name_ << ": asked for " << wanted << " baud, ";
    if (rate_ == 0) {
        log_ << "the speed that the driver set is not known" << std::endl;
    } else {
        log_ << "the driver set " << rate_ << std::endl;
    }
}

BridgeStatus SerialBridge::SI_SetTimeouts(Dword read_ms, Dword write_ms) {
    read_time_out_ = milliseconds(read_ms);
    write_time_out_ = milliseconds(write_ms);
    return si_success;
}

BridgeStatus SerialBridge::SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) {
    return on_port(handle,
                   [&](SerialPort& port) { return port.flush(transmit != 0, receive != 0); });
}

BridgeStatus SerialBridge::SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) {
    std::size_t count = 0;
    const BridgeStatus status = on_port(
        handle, [&](SerialPort& port) { return port.write(bytes, write_time_out_, count); });
    written = static_cast<Dword>(count);
    return status;
}

BridgeStatus SerialBridge::SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) {
    std::size_t count = 0;
    const BridgeStatus status =
        on_port(handle, [&](SerialPort& port) { return port.read(bytes, read_time_out_, count); });
    read = static_cast<Dword>(count);
    if (status == si_success && count == 0 && !bytes.empty()) {
        return si_read_timed_out;
    }
    return status;
}

BridgeStatus SerialBridge::SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) {
    std::size_t count = 0;
    queue_status = 0;
    const BridgeStatus status =
        on_port(handle, [&](SerialPort& port) { return port.waiting(count); });
    waiting = static_cast<Dword>(count);
    return status;
}

std::string SerialBridge::diagnosis() {
    return std::string("The bridge library ") + bridge_library_name +
           " is not there: the kernel's serial ports are used in its place.\n" +
           (loaders_words_.empty() ? "" : "The system says: " + loaders_words_ + "\n") + "\n" +
           usb_diagnosis(Way::serial_port);
}

} // namespace kv408
