#pragma once

// The USB devices of this computer as the kernel shows them in files. Not there on Windows.

#include <optional>
#include <string>
#include <vector>

namespace kv408 {

/// A USB device as the kernel shows it. What cannot be read is empty.
struct UsbDevice {
    std::string place;                ///< where it is plugged in, as the kernel counts: "1-2"
    std::string ids;                  ///< ids of vendor and product: "10c4:ea60"
    std::string serial;               ///< serial-number string; empty when it has none
    bool serial_unreadable = false;   ///< it has a serial number that may not be read
    bool hub = false;                 ///< a hub, which other devices are plugged into
    std::string node;                 ///< device node of the whole device: "/dev/bus/usb/001/004"
    bool set_up = false;              ///< the kernel has set it up: it has interfaces
    std::vector<std::string> drivers; ///< kernel drivers that have its interfaces: "cp210x"
    std::vector<std::string> ports;   ///< device nodes of its serial ports: "/dev/ttyUSB0"
};

/// All USB devices in the order of their places; nothing when the kernel does not show them.
[[nodiscard]] std::optional<std::vector<UsbDevice>> list_usb_devices();

/// True when the kernel has the driver of this name available, loaded or built in.
[[nodiscard]] bool has_driver(const std::string& name);

} // namespace kv408
