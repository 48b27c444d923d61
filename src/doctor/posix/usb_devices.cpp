#include "doctor/posix/usb_devices.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <sstream>
#include <string_view>

namespace kv408 {
namespace {

namespace fs = std::filesystem;

/// One attribute of a device.
struct Attribute {
    std::string text;
    bool unreadable = false; ///< it is there and may not be read
};

Attribute attribute(const fs::path& folder, const char* name) {
    std::error_code error;
    if (!fs::exists(folder / name, error)) {
        return {.text = {}, .unreadable = error != std::error_code{}};
    }
    std::ifstream file(folder / name);
    Attribute result;
    std::getline(file, result.text);
    result.unreadable = !file && !file.eof();
    return result;
}

/// Names of the entries of `folder`, none when it cannot be read.
std::vector<std::string> entries_of(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// `number`, decimal, with leading zeros to three digits.
std::string three_digits(const std::string& number) {
    std::ostringstream text;
    text << std::setw(3) << std::setfill('0') << number;
    return text.str();
}

std::string node_of(const fs::path& folder) {
    const std::string bus = attribute(folder, "busnum").text;
    const std::string device = attribute(folder, "devnum").text;
    return bus.empty() || device.empty()
               ? std::string()
               : "/dev/bus/usb/" + three_digits(bus) + "/" + three_digits(device);
}

/// Adds the serial ports below the interface in `folder`.
void add_ports(const fs::path& folder, std::vector<std::string>& ports) {
    for (const std::string& name : entries_of(folder)) {
        if (name == "tty") {
            for (const std::string& port : entries_of(folder / name)) {
                ports.push_back("/dev/" + port);
            }
        } else if (name.starts_with("tty")) {
            ports.push_back("/dev/" + name);
        }
    }
}

void add_interfaces(const fs::path& folder, UsbDevice& device) {
    for (const std::string& name : entries_of(folder)) {
        if (!name.starts_with(device.place + ":")) {
            continue;
        }
        device.set_up = true;
        std::error_code error;
        const fs::path driver = fs::read_symlink(folder / name / "driver", error);
        if (!error) {
            device.drivers.push_back(driver.filename().string());
        }
        add_ports(folder / name, device.ports);
    }
}

UsbDevice device_at(const fs::path& folder) {
    constexpr std::string_view class_of_hubs = "09";
    UsbDevice device;
    device.place = folder.filename().string();
    device.ids = attribute(folder, "idVendor").text + ":" + attribute(folder, "idProduct").text;
    const Attribute serial = attribute(folder, "serial");
    device.serial = serial.text;
    device.serial_unreadable = serial.unreadable;
    device.hub = attribute(folder, "bDeviceClass").text == class_of_hubs;
    device.node = node_of(folder);
    add_interfaces(folder, device);
    return device;
}

} // namespace

std::optional<std::vector<UsbDevice>> list_usb_devices() {
    const fs::path folder = "/sys/bus/usb/devices";
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        return std::nullopt;
    }
    std::vector<UsbDevice> devices;
    for (const std::string& name : entries_of(folder)) {
        // The names of interfaces have a colon.
        if (name.find(':') == std::string::npos) {
            devices.push_back(device_at(folder / name));
        }
    }
    return devices;
}

bool has_driver(const std::string& name) {
    std::error_code error;
    return fs::exists("/sys/bus/usb/drivers/" + name, error) ||
           fs::exists("/sys/module/" + name, error);
}

} // namespace kv408
