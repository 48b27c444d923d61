#pragma once

#include <atomic>
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

    /// Plugs in a device with serial number `serial`, or without one where that is null; its port
    /// is /dev/ttyUSB<number>. No number is used twice.
    void plug(int number, const char* serial);

    /// Pulls the device of port `number` out: the port is hung up and goes.
    void unplug(int number);

    /// The device's end of port `number`, non-blocking; it belongs to the port.
    [[nodiscard]] int far_end(int number) const;

    /// The pseudo terminal behind port `number`: "/dev/pts/3".
    [[nodiscard]] std::string terminal(int number) const;

    /// Lets any user of the machine look up the ports, as in the real folders.
    void open_folders() const;

    std::atomic<bool> speed_refused = false; ///< setting the speed fails
    std::atomic<Dword> rounded_speed = 0;    ///< the speed that every port reports, unless 0

private:
    struct Release {
        void operator()(void* object) const { g_object_unref(object); }
    };

    [[nodiscard]] std::string root() const;
    static gboolean handle_ioctl(UMockdevIoctlBase* base, UMockdevIoctlClient* client,
                                 gpointer ports);
    bool answer(UMockdevIoctlClient* client, unsigned long request) const;

    std::unique_ptr<UMockdevTestbed, Release> testbed_;
    std::unique_ptr<UMockdevIoctlBase, Release> handler_;
};

/// What the device's end `far_end` of a port finds set by the program.
struct LineSettings {
    Dword baud = 0;            ///< speed of both directions, 0 where they differ
    bool eight_bits = false;   ///< 8 data bits
    bool parity = false;       ///< a parity bit
    bool two_stops = false;    ///< two stop bits
    bool flow_control = false; ///< by modem lines or by characters
};

[[nodiscard]] LineSettings line_settings(int far_end);

/// Puts two stop bits, both kinds of flow control and 9600 baud on the port, as another program
/// may leave it.
void leave_odd_settings(int far_end);

} // namespace kv408
