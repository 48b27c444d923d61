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

    BridgeStatus SI_GetNumDevices(Dword& count) override {
        announce_();
        return bridge_.SI_GetNumDevices(count);
    }

    BridgeStatus SI_GetProductString(Dword index, std::span<Byte, product_string_size> text,
                                     Dword option) override {
        announce_();
        return bridge_.SI_GetProductString(index, text, option);
    }

    BridgeStatus SI_Open(Dword index, Handle& handle) override {
        announce_();
        return bridge_.SI_Open(index, handle);
    }

    BridgeStatus SI_Close(Handle handle) override {
        announce_();
        return bridge_.SI_Close(handle);
    }

    BridgeStatus SI_SetBaudRate(Handle handle, Dword baud_rate) override {
        announce_();
        return bridge_.SI_SetBaudRate(handle, baud_rate);
    }

    BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) override {
        announce_();
        return bridge_.SI_SetTimeouts(read_ms, write_ms);
    }

    BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) override {
        announce_();
        return bridge_.SI_FlushBuffers(handle, transmit, receive);
    }

    BridgeStatus SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) override {
        announce_();
        return bridge_.SI_Write(handle, bytes, written);
    }

    BridgeStatus SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) override {
        announce_();
        return bridge_.SI_Read(handle, bytes, read);
    }

    BridgeStatus SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) override {
        announce_();
        return bridge_.SI_CheckRXQueue(handle, waiting, queue_status);
    }

    [[nodiscard]] std::string trouble() const override { return bridge_.trouble(); }
    [[nodiscard]] std::string diagnosis() override { return bridge_.diagnosis(); }

private:
    Bridge& bridge_;
    std::function<void()> announce_;
};

} // namespace kv408
