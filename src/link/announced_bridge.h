#pragma once

#include <functional>
#include <utility>

#include "link/bridge.h"

namespace kv408 {

/// A bridge that announces each operation before it passes it on: one may never come back.
class AnnouncedBridge : public Bridge {
public:
    /// Passes on to `bridge`, each time after `announce`.
    AnnouncedBridge(Bridge& bridge, std::function<void()> announce)
        : bridge_(bridge), announce_(std::move(announce)) {}

    Counted count_devices() override { return announced().count_devices(); }
    SerialNumber serial_number(std::uint32_t index) override {
        return announced().serial_number(index);
    }
    BridgeStatus open(std::uint32_t index) override { return announced().open(index); }
    BridgeStatus close() override { return announced().close(); }
    BridgeStatus set_speed(std::uint32_t baud) override { return announced().set_speed(baud); }
    BridgeStatus set_time_out(std::uint32_t milliseconds) override {
        return announced().set_time_out(milliseconds);
    }
    BridgeStatus flush() override { return announced().flush(); }
    BridgeStatus write(std::span<const Byte> bytes) override { return announced().write(bytes); }
    Counted read(std::span<Byte> bytes) override { return announced().read(bytes); }
    Counted waiting() override { return announced().waiting(); }
    [[nodiscard]] std::string trouble() const override { return bridge_.trouble(); }

private:
    Bridge& announced() {
        announce_();
        return bridge_;
    }

    Bridge& bridge_;
    std::function<void()> announce_;
};

} // namespace kv408
