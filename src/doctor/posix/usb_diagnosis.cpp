#include "doctor/posix/usb_diagnosis.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sstream>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

#include "doctor/posix/device_users.h"
#include "doctor/posix/usb_devices.h"
#include "host/shown_text.h"
#include "link/instrument_serial.h"
#include "link/posix/serial_port.h"
#include "link/posix/serial_trouble.h"

namespace kv408 {
namespace {

/// Driver of the kernel for programs that reach a device without a driver.
constexpr std::string_view raw_driver = "usbfs";

/// Ids of the USB-to-UART bridges of the instrument's kind, for which the kernel has a driver.
constexpr std::array<std::string_view, 7> bridge_ids = {
    "10c4:ea60", "10c4:ea61", "10c4:ea63", "10c4:ea70", "10c4:ea71", "10c4:ea7a", "10c4:ea7b"};

/// The kernel's driver for them, which makes the serial port.
constexpr const char* bridge_driver = "cp210x";

constexpr const char* plug_in_anew = "Unplug the instrument and plug it in again.";

bool has_bridge_ids(const UsbDevice& device) {
    return std::find(bridge_ids.begin(), bridge_ids.end(), device.ids) != bridge_ids.end();
}

bool could_be_the_instrument(const UsbDevice& device) {
    return !device.ports.empty() || is_instrument(device.serial) || device.serial_unreadable ||
           has_bridge_ids(device);
}

bool is_ours(const DeviceUser& user) {
    return user.process == getpid();
}

/// "minicom (process 4711) and cat (process 4712)".
std::string names_of(const DeviceUsers& users) {
    std::string text;
    for (const DeviceUser& user : users) {
        text += text.empty() ? "" : " and ";
        text += user.name.empty() ? "a program" : shown_line(user.name);
        text.append(" (process ").append(std::to_string(user.process)).append(")");
    }
    return text;
}

/// What to say of the device node `node` that `others` than this program use, where opening it
/// gives the system error number `error`, 0 when it can be opened over `way`.
std::string reason_of_node(const std::string& node, int error, const DeviceUsers& others, Way way) {
    if (error == EBUSY && others.empty()) {
        // Only root sees what other users' programs have open.
        return serial_trouble(node, error) +
               (geteuid() == 0 ? "" : "\nThis line tells which it is:\nsudo kv408-doctor");
    }
    if (error == EBUSY) {
        return node + " is in use by " + names_of(others) +
               ". Close that program and start this one again.";
    }
    if (error != 0) {
        return serial_trouble(node, error);
    }
    if (!others.empty()) {
        return node + " is open in " + names_of(others) +
               " too, which disturbs the traffic. Close that program.";
    }
    return way == Way::no_library
               ? "It can be opened as soon as the bridge library can be used."
               : "It can be opened. If the instrument does not answer, check its power.";
}

/// Takes this program out of `users`; true when it was among them.
bool take_ourselves_out(DeviceUsers& users) {
    const auto first = std::remove_if(users.begin(), users.end(), is_ours);
    const bool found = first != users.end();
    users.erase(first, users.end());
    return found;
}

std::string reason_of_port(const std::string& port) {
    DeviceUsers users = users_of(port);
    if (take_ourselves_out(users) && users.empty()) {
        return "This program has it open.";
    }
    return reason_of_node(port, SerialPortLook(port).error(), users, Way::serial_port);
}

/// What to say where the Braille service has the device, or probably has it: `how` says which.
std::string reason_of_braille(const DeviceUsers& service, const std::string& how) {
    return names_of(service) + ", the service for Braille displays, " + how +
           " This line ends the service, for good:\n"
           "sudo systemctl mask --now brltty.service brltty-udev.service\n" +
           plug_in_anew;
}

/// What to say of the instrument's device where no driver has it.
std::string reason_of_missing_driver(const UsbDevice& device) {
    const std::string driver = bridge_driver;
    std::string text = "It has no driver and so no serial port";
    text += has_driver(driver) ? ", although the driver " + driver + " is loaded. "
                               : ". This line loads the driver:\nsudo modprobe " + driver + "\n";
    text += plug_in_anew;
    if (!has_bridge_ids(device)) {
        text += " If it still has no serial port, " + driver + " does not know its ids, " +
                device.ids + ".";
    }
    return text;
}

/// What to say of the instrument's device where the kernel makes no serial port of it.
std::string reason_of_missing_port(const UsbDevice& device) {
    if (!device.set_up) {
        return std::string("The system has not set it up. ") + plug_in_anew;
    }
    const auto& drivers = device.drivers;
    const bool taken = std::find(drivers.begin(), drivers.end(), raw_driver) != drivers.end();
    const DeviceUsers service = processes_called("brltty");
    if (!taken && !drivers.empty()) {
        return "The driver " + drivers.front() + " makes no serial port of it. " + plug_in_anew;
    }
    const DeviceUsers users = taken ? users_of(device.node) : DeviceUsers();
    if (!users.empty() && (service.empty() || users != service)) {
        return names_of(users) +
               " has taken it, so that it has no serial port. Close that program. " + plug_in_anew;
    }
    if (!service.empty()) {
        return reason_of_braille(service, users.empty() ? "takes such devices." : "has taken it.");
    }
    if (taken) {
        return "Another program has taken it, so that it has no serial port. Close that program. " +
               std::string(plug_in_anew);
    }
    return reason_of_missing_driver(device);
}

/// What to say of the instrument's device where the bridge library is to take it; `way` says
/// whether the library can be used.
std::string reason_for_library(const UsbDevice& device, Way way) {
    DeviceUsers users = users_of(device.node);
    for (const std::string& port : device.ports) {
        for (const DeviceUser& user : users_of(port)) {
            if (std::find(users.begin(), users.end(), user) == users.end()) {
                users.push_back(user);
            }
        }
    }
    if (take_ourselves_out(users) && users.empty()) {
        return "This program has it open.";
    }
    if (device.node.empty()) {
        return std::string("It has just gone. ") + plug_in_anew;
    }
    const int handle = open(device.node.c_str(), O_RDWR | O_CLOEXEC);
    const int error = handle < 0 ? errno : 0;
    if (handle >= 0) {
        close(handle);
    }
    if (error == EACCES || error == EPERM) {
        return permission_for_now(device.node);
    }
    return reason_of_node(device.node, users.empty() ? error : EBUSY, users, way);
}

/// Why `device` is no instrument; empty when it is one.
std::string reason_of_serial(const UsbDevice& device) {
    const std::string wanted(instrument_prefix);
    if (device.serial_unreadable) {
        return "Its serial number cannot be read.";
    }
    if (device.serial.empty()) {
        return "It has no serial number. That of the instrument begins with " + wanted + ".";
    }
    if (!is_instrument(device.serial)) {
        return "Its serial number is another one than the instrument's, which begins with " +
               wanted + ".";
    }
    return {};
}

std::string title_of(const UsbDevice& device, const std::string& port) {
    const std::string place = "USB device " + device.place + ", " + device.ids;
    const std::string serial =
        device.serial.empty() ? "" : ", serial number " + shown_line(device.serial);
    return (port.empty() ? place + serial : port + " (" + place + serial + ")") + ":\n";
}

/// Writes what to say of `device` to `out`, one paragraph per serial port.
void write_device(std::ostream& out, const UsbDevice& device, Way way) {
    const std::string other = reason_of_serial(device);
    const auto write = [&](const std::string& port, const std::string& reason) {
        out << '\n' << title_of(device, port) << reason << '\n';
    };
    if (way != Way::serial_port) {
        write({}, other.empty() ? reason_for_library(device, way) : other);
    } else if (device.ports.empty()) {
        write({}, other.empty() ? reason_of_missing_port(device) : other);
    } else {
        for (const std::string& port : device.ports) {
            write(port, other.empty() ? reason_of_port(port) : other);
        }
    }
}

} // namespace

std::string usb_diagnosis(Way way) {
    const auto devices = list_usb_devices();
    if (!devices) {
        return "The system shows no USB devices: there is no /sys/bus/usb/devices.\n";
    }
    std::ostringstream candidates;
    std::size_t others = 0;
    for (const UsbDevice& device : *devices) {
        if (could_be_the_instrument(device)) {
            write_device(candidates, device, way);
        } else {
            others += device.hub ? 0 : 1;
        }
    }
    if (std::string text = candidates.str(); !text.empty()) {
        return text.substr(1);
    }
    std::ostringstream text;
    text << "No device that could be the instrument is attached to this computer. Other USB "
            "devices: "
         << (others == 0 ? "none" : std::to_string(others)) << ".\n";
    return text.str();
}

} // namespace kv408
