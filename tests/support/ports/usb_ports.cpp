#include "support/ports/usb_ports.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <asm/termbits.h>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kv408 {
namespace {

std::string port_name(int number) {
    return std::string("ttyUSB").append(std::to_string(number));
}

std::string device_folder(int number) {
    return std::string("/devices/pci0000:00/usb1/1-").append(std::to_string(number + 1));
}

/// What umockdev is told of a device.
std::string device_text(int number, const UsbPorts::Portless& device) {
    const std::string ids = device.ids;
    std::string text =
        "P: " + device_folder(number) + "\nE: SUBSYSTEM=usb\n" +
        "E: DEVTYPE=usb_device\nA: busnum=1\nA: devnum=" + std::to_string(number + 2) +
        "\nA: idVendor=" + ids.substr(0, 4) + "\nA: idProduct=" + ids.substr(5) +
        "\nA: bDeviceClass=" + device.device_class + "\n";
    if (device.serial != nullptr) {
        text.append("A: serial=").append(device.serial).append("\n");
    }
    return text + "\n";
}

/// Folder of the device's one interface.
std::string interface_folder(int number) {
    const std::string device = device_folder(number);
    return device + device.substr(device.rfind('/')) + ":1.0";
}

/// Folder of the terminal below that of its device, as the kernel nests them.
std::string terminal_folder(int number) {
    const std::string name = port_name(number);
    return interface_folder(number) + "/" + name + "/tty/" + name;
}

/// The `Value` that an ioctl of `client` passes, to be read and changed; null when it cannot be
/// reached.
template <typename Value>
UMockdevIoctlData* argument(UMockdevIoctlClient* client) {
    return umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, sizeof(Value),
                                       nullptr);
}

template <typename Value>
void put(UMockdevIoctlData* data, Value value) {
    umockdev_ioctl_data_update(data, 0, reinterpret_cast<guint8*>(&value), sizeof value);
}

} // namespace

UsbPorts::UsbPorts() : testbed_(umockdev_testbed_new()), handler_(umockdev_ioctl_base_new()) {
    g_signal_connect(handler_.get(), "handle-ioctl", G_CALLBACK(handle_ioctl), this);
}

UsbPorts::~UsbPorts() = default;

void UsbPorts::plug_nothing() const {
    for (const char* const folder : {"/sys/class/tty", "/sys/bus/usb/devices"}) {
        std::filesystem::create_directories(root() + folder);
    }
}

void UsbPorts::plug(int number, const char* serial) {
    const std::string name = port_name(number);
    std::string text = device_text(number, {.serial = serial});
    text += "P: " + interface_folder(number) + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n";
    text += "\nP: " + interface_folder(number) + "/" + name + "\nE: SUBSYSTEM=usb-serial\n";
    text += "\nP: " + terminal_folder(number) + "\nN: " + name + "\nE: DEVNAME=/dev/" + name +
            "\nE: SUBSYSTEM=tty\nL: device=../../../" + name + "\n\n";
    add(text);
    GError* error = nullptr;
    const std::string node = "/dev/" + name;
    if (!umockdev_testbed_attach_ioctl(testbed_.get(), node.c_str(), handler_.get(), &error)) {
        throw std::runtime_error(error->message);
    }
    const int end = far_end(number);
    fcntl(end, F_SETFL, fcntl(end, F_GETFL) | O_NONBLOCK);
}

void UsbPorts::plug_modem(int number, const char* serial) {
    const std::string name = std::string("ttyACM").append(std::to_string(number));
    const std::string interface = interface_folder(number);
    std::string text = device_text(number, {.serial = serial});
    text += "P: " + interface + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n";
    text += "\nP: " + interface + "/tty/" + name + "\nN: " + name + "\nE: DEVNAME=/dev/" + name +
            "\nE: SUBSYSTEM=tty\nL: device=../../.." + interface.substr(interface.rfind('/')) +
            "\n\n";
    add(text);
}

void UsbPorts::plug_portless(int number, const Portless& device) {
    std::string text = device_text(number, device);
    if (device.set_up) {
        text += "P: " + interface_folder(number) + "\nE: SUBSYSTEM=usb\nE: DEVTYPE=usb_interface\n";
        if (device.driver != nullptr) {
            text.append("L: driver=../../../../bus/usb/drivers/").append(device.driver);
        }
        text += "\n\n";
    }
    add(text);
}

void UsbPorts::add(const std::string& text) const {
    GError* error = nullptr;
    if (!umockdev_testbed_add_from_string(testbed_.get(), text.c_str(), &error)) {
        throw std::runtime_error(error->message);
    }
}

void UsbPorts::show_folder(const std::string& path) const {
    std::filesystem::create_directories(root() + path);
}

void UsbPorts::put_raw_node(int number, const std::string& target) const {
    const std::string folder = root() + "/dev/bus/usb/001";
    std::filesystem::create_directories(folder);
    std::filesystem::create_symlink(target, folder + "/00" + std::to_string(number + 2));
}

void UsbPorts::remove_node(int number) const {
    std::filesystem::remove(root() + "/dev/" + port_name(number));
}

void UsbPorts::remove_entry(int number) const {
    std::filesystem::remove(root() + "/sys/class/tty/" + port_name(number));
}

void UsbPorts::remove_attribute(int number, const std::string& name) const {
    std::filesystem::remove(root() + "/sys" + device_folder(number) + "/" + name);
}

void UsbPorts::hide_serial(int number) const {
    std::filesystem::permissions(root() + "/sys" + device_folder(number) + "/serial",
                                 std::filesystem::perms::none);
}

void UsbPorts::unplug(int number) {
    const std::string node = "/dev/" + port_name(number);
    umockdev_testbed_detach_ioctl(testbed_.get(), node.c_str(), nullptr);
    // The last that has the far end lets go of it: the kernel hangs the port up. The testbed still
    // owns the descriptor's number.
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nothing, far_end(number));
    close(nothing);
    std::filesystem::remove(root() + node);
    const std::string interface = interface_folder(number);
    for (const std::string& folder : {terminal_folder(number), interface + "/" + port_name(number),
                                      interface, device_folder(number)}) {
        umockdev_testbed_remove_device(testbed_.get(), ("/sys" + folder).c_str());
    }
}

int UsbPorts::far_end(int number) const {
    const std::string node = "/dev/" + port_name(number);
    return umockdev_testbed_get_dev_fd(testbed_.get(), node.c_str());
}

std::string UsbPorts::terminal(int number) const {
    std::array<char, 64> name = {};
    if (ptsname_r(far_end(number), name.data(), name.size()) != 0) {
        throw std::runtime_error("no pseudo terminal");
    }
    return name.data();
}

void UsbPorts::open_folders() const {
    using std::filesystem::perms;
    std::filesystem::permissions(root(), perms(0755));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root() + "/ioctl")) {
        std::filesystem::permissions(entry.path(), perms(0777));
    }
}

std::string UsbPorts::root() const {
    gchar* const folder = umockdev_testbed_get_root_dir(testbed_.get());
    std::string result = folder;
    g_free(folder);
    return result;
}

gboolean UsbPorts::handle_ioctl(UMockdevIoctlBase* /*base*/, UMockdevIoctlClient* client,
                                gpointer ports) {
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    if (static_cast<const UsbPorts*>(ports)->answer(client, request)) {
        return TRUE;
    }
    // Carried out by the kernel, on the pseudo terminal.
    int error = 0;
    const int result = umockdev_ioctl_client_execute(client, &error, nullptr);
    const std::uint32_t rounded = static_cast<const UsbPorts*>(ports)->rounded_speed;
    if (request == TCGETS2 && rounded != 0) {
        UMockdevIoctlData* const data = argument<termios2>(client);
        termios2 settings = *reinterpret_cast<termios2*>(data->data);
        settings.c_ispeed = rounded;
        settings.c_ospeed = rounded;
        put(data, settings);
        umockdev_ioctl_data_unref(data);
    }
    umockdev_ioctl_client_complete(client, result, error);
    return TRUE;
}

bool UsbPorts::answer(UMockdevIoctlClient* client, unsigned long request) const {
    if (const int error = on_request ? on_request(request) : 0; error != 0) {
        umockdev_ioctl_client_complete(client, -1, error);
        return true;
    }
    switch (request) {
    case TIOCMGET: {
        UMockdevIoctlData* const lines = argument<int>(client);
        put<int>(lines, TIOCM_DTR | TIOCM_RTS);
        umockdev_ioctl_data_unref(lines);
        break;
    }
    case TIOCMSET:
    case TIOCMBIS:
    case TIOCMBIC:
        break;
    case TCSETS2:
        if (speed_refused) {
            umockdev_ioctl_client_complete(client, -1, EINVAL);
            return true;
        }
        return false;
    default:
        return false;
    }
    umockdev_ioctl_client_complete(client, 0, 0);
    return true;
}

LineSettings line_settings(int far_end) {
    termios2 found = {};
    if (ioctl(far_end, TCGETS2, &found) != 0) {
        throw std::runtime_error("the far end has no settings");
    }
    LineSettings line;
    line.baud = found.c_ispeed == found.c_ospeed ? found.c_ospeed : 0;
    line.eight_bits = (found.c_cflag & CSIZE) == CS8;
    line.parity = (found.c_cflag & PARENB) != 0;
    line.two_stops = (found.c_cflag & CSTOPB) != 0;
    line.flow_control = (found.c_cflag & CRTSCTS) != 0 || (found.c_iflag & (IXON | IXOFF)) != 0;
    line.lines = (found.c_lflag & ICANON) != 0;
    return line;
}

void leave_odd_settings(int far_end) {
    termios2 settings = {};
    ioctl(far_end, TCGETS2, &settings);
    settings.c_cflag = (settings.c_cflag & ~static_cast<tcflag_t>(CBAUD)) | BOTHER;
    settings.c_cflag |= CSTOPB | CRTSCTS;
    settings.c_iflag |= IXON | IXOFF;
    settings.c_lflag |= ICANON;
    settings.c_ispeed = 9600;
    settings.c_ospeed = 9600;
    ioctl(far_end, TCSETS2, &settings);
}

} // namespace kv408
