#pragma once

#include <functional>
#include <utility>

#include "link/bridge.h"

namespace kv408 {

/// Passes on to another bridge, and calls a function before each operation on an open device: there
/// a test lets time pass, as it does when the computer has no time for the program.
class DelayedBridge : public Bridge {
public:
    explicit DelayedBridge(Bridge& bridge) : bridge_(bridge) {}

    /// Sets what is called before each operation.
    void before_each(std::function<void()> call) { call_ = std::move(call); }

    Counted count_devices() override { return bridge_.count_devices(); }
    SerialNumber serial_number(std::uint32_t index) override {
        return bridge_.serial_number(index);
    }
    BridgeStatus open(std::uint32_t index) override { return bridge_.open(index); }
    BridgeStatus close() override { return bridge_.close(); }
    BridgeStatus set_speed(std::uint32_t baud) override { return next().set_speed(baud); }
    BridgeStatus set_time_out(std::uint32_t ms) override { return next().set_time_out(ms); }
    BridgeStatus flush() override { return next().flush(); }
    BridgeStatus write(std::span<const Byte> bytes) override { return next().write(bytes); }
    Counted read(std::span<Byte> bytes) override { return next().read(bytes); }
    Counted waiting() override { return next().waiting(); }

private:
    Bridge& next() const {
        if (call_) {
            call_();
        }
        return bridge_;
    }

    Bridge& bridge_;
    std::function<void()> call_;
};

} // namespace kv408
