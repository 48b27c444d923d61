#include "support/ports/instrument_on_port.h"

#include <array>
#include <chrono>
#include <vector>

#include <poll.h>
#include <unistd.h>

#include "support/ports/usb_ports.h"

namespace kv408 {

using std::chrono::milliseconds;

void InstrumentOnPort::begin() {
    make_exact(simulation_);
    bridge_.open(0);
    bridge_.set_time_out(0);
    thread_ = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

void InstrumentOnPort::run(const std::stop_token& stop) {
    while (!stop.stop_requested()) {
        pollfd wanted = {far_end_, POLLIN, 0};
        poll(&wanted, 1, 1);
        if ((wanted.revents & POLLIN) != 0) {
            hear();
        } else if (wanted.revents != 0) {
            // Nobody has the port open.
            std::this_thread::sleep_for(milliseconds(1));
        }
        speak();
    }
}

void InstrumentOnPort::hear() {
    std::array<Byte, 256> bytes = {};
    const ssize_t count = read(far_end_, bytes.data(), bytes.size());
    if (count <= 0) {
        return;
    }
    const std::lock_guard lock(mutex_);
    const std::uint32_t baud = line_settings(far_end_).baud;
    if (baud != baud_ && bridge_.set_speed(baud) == bridge_success) {
        baud_ = baud;
    }
    bridge_.write(std::span(bytes).first(static_cast<std::size_t>(count)));
}

void InstrumentOnPort::speak() {
    const std::lock_guard lock(mutex_);
    std::vector<Byte> bytes(bridge_.waiting().count);
    if (bytes.empty()) {
        return;
    }
    std::span<const Byte> left = std::span(bytes).first(bridge_.read(bytes).count);
    while (!left.empty()) {
        const ssize_t sent = write(far_end_, left.data(), left.size());
        if (sent <= 0) {
            return;
        }
        left = left.subspan(static_cast<std::size_t>(sent));
    }
}

} // namespace kv408
