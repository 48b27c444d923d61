#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include <umockdev.h>

#include "link/bridge.h"

namespace kv408 {

/// USB serial ports that the kernel does not have: umockdev shows them in this process's /sys and
/// /dev, and behind each stands a pseudo terminal, so that bytes and settings go through the
/// kernel's own terminal layer. What a pseudo terminal lacks, the modem lines, is answered here.
class UsbPorts {
public:
    UsbPorts();
    ~UsbPorts();
    UsbPorts(const UsbPorts&) = delete;
    UsbPorts& operator=(const UsbPorts&) = delete;

    /// Shows a computer that has USB and serial ports, and nothing plugged in.
    void plug_nothing() const;

    /// Plugs in a device with serial number `serial`, or without one where that is null; its port
    /// is /dev/ttyUSB<number>. No number is used twice.
    void plug(int number, const char* serial);

    /// Plugs in a device whose port the kernel puts right below its interface, as
    /// /dev/ttyACM<number>.
    void plug_modem(int number, const char* serial);

    /// A device without a port.
    struct Portless {
        const char* serial = nullptr;    ///< serial number, null for none
        const char* driver = nullptr;    ///< driver of its interface, null for none
        const char* ids = "10c4:ea60";   ///< ids of vendor and product
        const char* device_class = "00"; ///< "09" is a hub
        bool set_up = true;              ///< it has an interface
    };

    /// Plugs in `device` as the one of that number.
    void plug_portless(int number, const Portless& device);

    /// Shows the empty folder `path`: "/sys/module/usbserial".
    void show_folder(const std::string& path) const;

    /// Puts a second name of the file `target` where the raw device of that number is to be.
    void put_raw_node(int number, const std::string& target) const;

    /// Takes the device node of port `number` away and leaves the rest.
    void remove_node(int number) const;

    /// Takes what /sys shows of port `number` away and leaves its device node.
    void remove_entry(int number) const;

    /// Takes what /sys tells as `name` of device `number` away: "devnum".
    void remove_attribute(int number, const std::string& name) const;

    /// Lets no user but root read the serial number of device `number`.
    void hide_serial(int number) const;

    /// Pulls the device of port `number` out: the port is hung up and goes.
    void unplug(int number);

    /// The device's end of port `number`, non-blocking; it belongs to the port.
    [[nodiscard]] int far_end(int number) const;

    /// The pseudo terminal behind port `number`: "/dev/pts/3".
    [[nodiscard]] std::string terminal(int number) const;

    /// Lets any user of the machine look up the ports, as in the real folders.
    void open_folders() const;

    std::atomic<bool> speed_refused = false;      ///< setting the speed fails
    std::atomic<std::uint32_t> rounded_speed = 0; ///< the speed that every port reports, unless 0

    /// Gives the system error number with which a request to a port is to fail, 0 where it is to be
    /// carried out. Called in another thread; set it while no request is under way.
    std::function<int(unsigned long request)> on_request;

private:
    struct Release {
        void operator()(void* object) const { g_object_unref(object); }
    };

    /// Adds the devices that `text` describes.
    void add(const std::string& text) const;
    [[nodiscard]] std::string root() const;
    static gboolean handle_ioctl(UMockdevIoctlBase* base, UMockdevIoctlClient* client,
                                 gpointer ports);
    bool answer(UMockdevIoctlClient* client, unsigned long request) const;

    std::unique_ptr<UMockdevTestbed, Release> testbed_;
    std::unique_ptr<UMockdevIoctlBase, Release> handler_;
};

/// What the device's end `far_end` of a port finds set by the program.
struct LineSettings {
    std::uint32_t baud = 0;    ///< speed of both directions, 0 where they differ
    bool eight_bits = false;   ///< 8 data bits
    bool parity = false;       ///< a parity bit
    bool two_stops = false;    ///< two stop bits
    bool flow_control = false; ///< by modem lines or by characters
    bool lines = false;        ///< bytes are held back until a line ends
};

[[nodiscard]] LineSettings line_settings(int far_end);

/// Puts two stop bits, both kinds of flow control, reading by lines and 9600 baud on the port, as
/// another program may leave it.
void leave_odd_settings(int far_end);

} // namespace kv408
