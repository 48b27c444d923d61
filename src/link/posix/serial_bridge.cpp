#include "link/posix/serial_bridge.h"

#include <limits>
#include <ostream>

#include "link/posix/serial_trouble.h"

namespace kv408 {

template <typename Action>
BridgeStatus SerialBridge::on_port(Action action) {
    if (port_ == nullptr) {
        return bridge_failed;
    }
    const int error = action(*port_);
    if (error != 0) {
        trouble_ = serial_trouble(port_name_, error);
        return bridge_failed;
    }
    return bridge_success;
}

Counted SerialBridge::count_devices() {
    auto entries = list_serial_ports();
    if (!entries) {
        trouble_ = "The system does not list its serial ports.";
        return {};
    }
    entries_ = std::move(*entries);
    trouble_.clear();
    return {bridge_success, static_cast<std::uint32_t>(entries_.size())};
}

SerialNumber SerialBridge::serial_number(std::uint32_t index) {
    if (index >= entries_.size()) {
        return {};
    }
    return {bridge_success, entries_[index].serial.substr(0, longest_serial_number)};
}

BridgeStatus SerialBridge::open(std::uint32_t index) {
    if (port_ != nullptr || index >= entries_.size()) {
        return bridge_failed;
    }
    auto port = std::make_unique<SerialPort>(clock_);
    port_name_ = entries_[index].name;
    if (const int error = port->open(port_name_); error != 0) {
        trouble_ = serial_trouble(port_name_, error);
        return bridge_failed;
    }
    port_ = std::move(port);
    trouble_.clear();
    return bridge_success;
}

BridgeStatus SerialBridge::close() {
    if (port_ == nullptr) {
        return bridge_failed;
    }
    port_.reset();
    rate_ = 0;
    return bridge_success;
}

BridgeStatus SerialBridge::set_speed(std::uint32_t baud) {
    if (baud == 0 || baud > std::numeric_limits<int>::max()) {
        return bridge_failed;
    }
    return on_port([&](SerialPort& port) {
        const int error = port.set_rate(static_cast<int>(baud));
        if (error == 0) {
            rate_ = static_cast<std::uint32_t>(port.rate());
            log_other_rate(baud);
        }
        return error;
    });
}

void SerialBridge::log_other_rate(std::uint32_t wanted) {
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

BridgeStatus SerialBridge::set_time_out(std::uint32_t milliseconds) {
    time_out_ = std::chrono::milliseconds(milliseconds);
    return bridge_success;
}

BridgeStatus SerialBridge::flush() {
    return on_port([](SerialPort& port) { return port.flush(); });
}

BridgeStatus SerialBridge::write(std::span<const Byte> bytes) {
    return on_port([&](SerialPort& port) { return port.write(bytes, time_out_); });
}

Counted SerialBridge::read(std::span<Byte> bytes) {
    std::size_t count = 0;
    const BridgeStatus status =
        on_port([&](SerialPort& port) { return port.read(bytes, time_out_, count); });
    const bool timed_out = status == bridge_success && count == 0 && !bytes.empty();
    return {timed_out ? bridge_read_timed_out : status, static_cast<std::uint32_t>(count)};
}

Counted SerialBridge::waiting() {
    std::size_t count = 0;
    const BridgeStatus status = on_port([&](SerialPort& port) { return port.waiting(count); });
    return {status, static_cast<std::uint32_t>(count)};
}

} // namespace kv408
