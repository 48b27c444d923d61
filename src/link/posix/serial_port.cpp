#include "link/posix/serial_port.h"

#include <algorithm>
#include <limits>

#include <fcntl.h>
#include <libserialport.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace kv408 {
namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

/// The system error number behind `result`, 0 when it is none.
int error_of(sp_return result) {
    if (result >= SP_OK) {
        return 0;
    }
    if (result == SP_ERR_FAIL) {
        const int code = sp_last_error_code();
        return code != 0 ? code : EIO;
    }
    return result == SP_ERR_MEM ? ENOMEM : ENODEV;
}

/// Frees a configuration of libserialport.
struct FreeConfig {
    void operator()(sp_port_config* config) const { sp_free_config(config); }
};
using Config = std::unique_ptr<sp_port_config, FreeConfig>;

/// A new configuration; null where there is no memory for it, which libserialport's functions then
/// refuse.
Config new_config() {
    sp_port_config* config = nullptr;
    return Config(sp_new_config(&config) == SP_OK ? config : nullptr);
}

/// Locks the open port `handle` without waiting; gives the error number, `EBUSY` when another
/// program has locked it.
int lock(int handle) {
    if (flock(handle, LOCK_EX | LOCK_NB) == 0) {
        return 0;
    }
    return errno == EWOULDBLOCK ? EBUSY : errno;
}

/// Keeps others from opening the port that `handle` has open; gives the error number.
int take_for_ourselves(int handle) {
    // The lock keeps out who asks for it, the mark who may not override it: neither is enough.
    if (const int error = lock(handle); error != 0) {
        return error;
    }
    return ioctl(handle, TIOCEXCL) == 0 ? 0 : errno;
}

/// Ends the flow control by modem lines of the open terminal `handle`; gives the error number.
/// libserialport 0.1.1 leaves it on where another program has left it on.
int end_modem_line_flow_control(int handle) {
    termios settings = {};
    if (tcgetattr(handle, &settings) != 0) {
        return errno;
    }
    if ((settings.c_cflag & CRTSCTS) == 0) {
        return 0;
    }
    settings.c_cflag &= ~static_cast<tcflag_t>(CRTSCTS);
    return tcsetattr(handle, TCSANOW, &settings) == 0 ? 0 : errno;
}

} // namespace

std::optional<std::vector<SerialPortEntry>> list_serial_ports() {
    sp_port** ports = nullptr;
    if (sp_list_ports(&ports) != SP_OK) {
        return std::nullopt;
    }
    std::vector<SerialPortEntry> entries;
    for (sp_port** port = ports; *port != nullptr; ++port) {
        const char* const serial = sp_get_port_usb_serial(*port);
        if (serial != nullptr && *serial != '\0') {
            entries.push_back({sp_get_port_name(*port), serial});
        }
    }
    sp_free_port_list(ports);
    return entries;
}

SerialPortLook::SerialPortLook(const std::string& name)
    : handle_(::open(name.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (handle_ < 0) {
        error_ = errno;
        return;
    }
    error_ = lock(handle_);
    flock(handle_, LOCK_UN);
    // Root gets past the mark of another program, and is to respect it.
    int marked = 0;
    if (error_ == 0 && ioctl(handle_, TIOCGEXCL, &marked) == 0 && marked != 0) {
        error_ = EBUSY;
    }
}

SerialPortLook::~SerialPortLook() {
    if (handle_ >= 0) {
        close(handle_);
    }
}

void SerialPort::Free::operator()(sp_port* port) const {
    sp_free_port(port);
}

SerialPort::~SerialPort() {
    if (handle_ >= 0) {
        // A terminal keeps this mark as long as anybody has it open.
        ioctl(handle_, TIOCNXCL);
        sp_close(port_.get());
    }
}

int SerialPort::open(const std::string& name) {
    // libserialport puts its own settings on a port as soon as it is open, also on one that another
    // program is using.
    const SerialPortLook look(name);
    if (look.error() != 0) {
        return look.error();
    }
    sp_port* found = nullptr;
    if (const int error = error_of(sp_get_port_by_name(name.c_str(), &found)); error != 0) {
        return error;
    }
    port_.reset(found);
    if (const int error = error_of(sp_open(found, SP_MODE_READ_WRITE)); error != 0) {
        return error;
    }
    int handle = -1;
    sp_get_port_handle(found, &handle); // an open port has one
    if (const int error = take_for_ourselves(handle); error != 0) {
        // The mark of the other program stays on the port.
        sp_close(found);
        return error;
    }
    handle_ = handle;
    return 0;
}

int SerialPort::set_rate(int baud) {
    if (const int error = end_modem_line_flow_control(handle_); error != 0) {
        return error;
    }
    const Config config = new_config();
    // In one go: a driver that rounds the speed would have it asked for again with each setting.
    sp_set_config_baudrate(config.get(), baud);
    sp_set_config_bits(config.get(), 8);
    sp_set_config_parity(config.get(), SP_PARITY_NONE);
    sp_set_config_stopbits(config.get(), 1);
    sp_set_config_flowcontrol(config.get(), SP_FLOWCONTROL_NONE);
    return error_of(sp_set_config(port_.get(), config.get()));
}

int SerialPort::rate() const {
    const Config config = new_config();
    int baud = 0;
    if (sp_get_config(port_.get(), config.get()) != SP_OK ||
        sp_get_config_baudrate(config.get(), &baud) != SP_OK) {
        return 0;
    }
    return std::max(baud, 0);
}

int SerialPort::wait_for(short events, nanoseconds deadline) const {
    pollfd wanted = {handle_, events, 0};
    // Longer waits than poll can count are cut; the callers then wait again.
    constexpr milliseconds longest{std::numeric_limits<int>::max()};
    const auto left = std::chrono::ceil<milliseconds>(deadline - clock_.now());
    const auto wait = std::clamp(left, milliseconds(0), longest);
    if (poll(&wanted, 1, static_cast<int>(wait.count())) < 0) {
        return errno == EINTR ? 0 : errno;
    }
    constexpr int gone = POLLERR | POLLHUP | POLLNVAL;
    return (wanted.revents & gone) != 0 ? EIO : 0;
}

int SerialPort::write(std::span<const Byte> bytes, milliseconds time_out) {
    const nanoseconds deadline = clock_.now() + time_out;
    while (!bytes.empty()) {
        const sp_return result = sp_nonblocking_write(port_.get(), bytes.data(), bytes.size());
        // A full queue is an error to libserialport.
        if (const int error = error_of(result); error != 0 && error != EAGAIN) {
            return error;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<int>(result, 0)));
        if (bytes.empty()) {
            break;
        }
        if (clock_.now() >= deadline) {
            return ETIMEDOUT;
        }
        if (const int error = wait_for(POLLOUT, deadline); error != 0) {
            return error;
        }
    }
    return 0;
}

int SerialPort::read(std::span<Byte> bytes, milliseconds time_out, std::size_t& read) {
    const nanoseconds deadline = clock_.now() + time_out;
    read = 0;
    while (read < bytes.size()) {
        const auto left = bytes.subspan(read);
        const sp_return result = sp_nonblocking_read(port_.get(), left.data(), left.size());
        if (const int error = error_of(result); error != 0) {
            return error;
        }
        read += static_cast<std::size_t>(result);
        if (read == bytes.size() || clock_.now() >= deadline) {
            break;
        }
        // A port that has gone reads as nothing at all; only this tells it from silence.
        if (const int error = wait_for(POLLIN, deadline); error != 0) {
            return error;
        }
    }
    return 0;
}

int SerialPort::flush() {
    return error_of(sp_flush(port_.get(), SP_BUF_BOTH));
}

int SerialPort::waiting(std::size_t& count) const {
    const sp_return result = sp_input_waiting(port_.get());
    count = result > 0 ? static_cast<std::size_t>(result) : 0;
    return error_of(result);
}

} // namespace kv408
