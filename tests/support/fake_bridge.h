#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "link/bridge.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// A bridge without an instrument behind it: a test says what each operation answers, and reads
/// afterwards what was asked of it, with the time on the virtual clock.
class FakeBridge : public Bridge {
public:
    /// One operation as it was called.
    struct Call {
        std::string operation;            ///< "SI_Write", ...
        std::vector<std::int64_t> values; ///< numbers handed in, or the bytes written
        std::chrono::nanoseconds time;    ///< on the clock, when it was called

        friend bool operator==(const Call& left, const Call& right) {
            return left.operation == right.operation && left.values == right.values;
        }
    };
    using Frame = std::vector<std::int64_t>;

    explicit FakeBridge(VirtualClock& clock) : clock_(clock) {}

    BridgeStatus SI_GetNumDevices(Dword& count) override {
        count = static_cast<Dword>(serials.size()) + extra_devices;
        return called("SI_GetNumDevices", {});
    }

    BridgeStatus SI_GetProductString(Dword index, std::span<Byte, product_string_size> text,
                                     Dword option) override {
        const BridgeStatus result = called("SI_GetProductString", {index, option});
        if (result == si_success && index < serials.size()) {
            const std::string& serial = serials[index];
            std::copy_n(serial.begin(), std::min(serial.size(), text.size()), text.begin());
        }
        return result;
    }

    BridgeStatus SI_Open(Dword index, Handle& handle) override {
        const BridgeStatus result = called("SI_Open", {index});
        handle = result == si_success ? this : nullptr;
        return result;
    }

    BridgeStatus SI_Close(Handle handle) override {
        handles.insert(handle);
        return called("SI_Close", {});
    }

    BridgeStatus SI_SetBaudRate(Handle handle, Dword rate) override {
        handles.insert(handle);
        return called("SI_SetBaudRate", {rate});
    }

    BridgeStatus SI_SetTimeouts(Dword read_ms, Dword write_ms) override {
        read_timeout_ = std::chrono::milliseconds(read_ms);
        return called("SI_SetTimeouts", {read_ms, write_ms});
    }

    BridgeStatus SI_FlushBuffers(Handle handle, Byte transmit, Byte receive) override {
        handles.insert(handle);
        if (flush_empties) {
            received.clear();
        }
        return called("SI_FlushBuffers", {transmit, receive});
    }

    BridgeStatus SI_Write(Handle handle, std::span<const Byte> bytes, Dword& written) override {
        handles.insert(handle);
        const Frame frame(bytes.begin(), bytes.end());
        const BridgeStatus result = called("SI_Write", frame);
        written = static_cast<Dword>(bytes.size());
        if (result == si_success && on_frame) {
            on_frame(frame);
        }
        return result;
    }

    BridgeStatus SI_Read(Handle handle, std::span<Byte> bytes, Dword& read) override {
        handles.insert(handle);
        const BridgeStatus result = called("SI_Read", {static_cast<std::int64_t>(bytes.size())});
        read = 0;
        while (read < bytes.size() && !received.empty()) {
            bytes[read++] = received.front();
            received.pop_front();
        }
        if (result == si_success && read == 0) {
            clock_.sleep(read_timeout_);
            return si_read_timed_out;
        }
        return result;
    }

    BridgeStatus SI_CheckRXQueue(Handle handle, Dword& waiting, Dword& queue_status) override {
        handles.insert(handle);
        const BridgeStatus result = called("SI_CheckRXQueue", {});
        waiting = static_cast<Dword>(received.size());
        queue_status = 0;
        if (on_check) {
            on_check(waiting);
        }
        return result;
    }

    [[nodiscard]] std::string trouble() const override { return trouble_text; }
    [[nodiscard]] std::string diagnosis() override { return diagnosis_text; }

    /// Puts `bytes` into the receive queue.
    void receive(const std::vector<int>& bytes) {
        for (const int byte : bytes) {
            received.push_back(static_cast<Byte>(byte));
        }
    }

    /// Makes the bridge acknowledge every frame.
    void acknowledge_all() {
        on_frame = [this](const Frame&) { received.push_back(6); };
    }

    /// The frames written so far, oldest first.
    [[nodiscard]] std::vector<Frame> frames() const {
        std::vector<Frame> result;
        for (const Call& call : calls) {
            if (call.operation == "SI_Write") {
                result.push_back(call.values);
            }
        }
        return result;
    }

    /// Every call with its numbers and the time in milliseconds: "SI_SetTimeouts 1000 1000 @20".
    [[nodiscard]] std::vector<std::string> timeline() const {
        std::vector<std::string> result;
        for (const Call& call : calls) {
            std::string line = call.operation;
            for (const std::int64_t value : call.values) {
                line.append(" ").append(std::to_string(value));
            }
            const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(call.time);
            result.push_back(line.append(" @").append(std::to_string(time.count())));
        }
        return result;
    }

    /// How often `operation` was called.
    [[nodiscard]] std::int64_t count(const std::string& operation) const {
        return std::count_if(calls.begin(), calls.end(),
                             [&](const Call& call) { return call.operation == operation; });
    }

    std::vector<std::string> serials = {"lm4rxa0SERIAL1"}; ///< attached devices
    Dword extra_devices = 0;                               ///< devices counted that have gone since
    std::map<std::string, BridgeStatus> status; ///< what an operation answers, 0 unless named
    std::deque<Byte> received;                  ///< receive queue
    bool flush_empties = true;                  ///< whether a flush empties the receive queue
    std::function<void(const Frame&)> on_frame; ///< runs after each frame written
    std::function<void(Dword&)> on_check;       ///< may change the number of waiting bytes told
    std::string trouble_text;                   ///< reason for trouble
    std::string diagnosis_text;                 ///< what a look at the devices shows
    std::vector<Call> calls;                    ///< every call, oldest first
    std::set<Handle> handles;                   ///< every handle that was handed in

private:
    BridgeStatus called(const std::string& operation, std::vector<std::int64_t> values) {
        calls.push_back({operation, std::move(values), clock_.now()});
        const auto answer = status.find(operation);
        return answer == status.end() ? si_success : answer->second;
    }

    VirtualClock& clock_;
    std::chrono::milliseconds read_timeout_{0};
};

} // namespace kv408
