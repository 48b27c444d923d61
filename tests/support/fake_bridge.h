#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
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
        std::string operation;            ///< as the bridge library calls it: "SI_Write", ...
        std::vector<std::int64_t> values; ///< numbers handed in, or the bytes written
        std::chrono::nanoseconds time;    ///< on the clock, when it was called

        friend bool operator==(const Call& left, const Call& right) {
            return left.operation == right.operation && left.values == right.values;
        }
    };
    using Frame = std::vector<std::int64_t>;

    explicit FakeBridge(VirtualClock& clock) : clock_(clock) {}

    Counted count_devices() override {
        return {called("SI_GetNumDevices", {}),
                static_cast<std::uint32_t>(serials.size()) + extra_devices};
    }

    SerialNumber serial_number(std::uint32_t index) override {
        const BridgeStatus result = called("SI_GetProductString", {index, 0});
        const bool told = result == bridge_success && index < serials.size();
        return {result, told ? serials[index].substr(0, longest_serial_number) : std::string()};
    }

    BridgeStatus open(std::uint32_t index) override { return called("SI_Open", {index}); }

    BridgeStatus close() override { return called("SI_Close", {}); }

    BridgeStatus set_speed(std::uint32_t baud) override { return called("SI_SetBaudRate", {baud}); }

    BridgeStatus set_time_out(std::uint32_t milliseconds) override {
        time_out_ = std::chrono::milliseconds(milliseconds);
        return called("SI_SetTimeouts", {milliseconds, milliseconds});
    }

    BridgeStatus flush() override {
        if (flush_empties) {
            received.clear();
        }
        return called("SI_FlushBuffers", {1, 1});
    }

    BridgeStatus write(std::span<const Byte> bytes) override {
        const Frame frame(bytes.begin(), bytes.end());
        const BridgeStatus result = called("SI_Write", frame);
        if (result == bridge_success && on_frame) {
            on_frame(frame);
        }
        return result;
    }

    Counted read(std::span<Byte> bytes) override {
        const BridgeStatus result = called("SI_Read", {static_cast<std::int64_t>(bytes.size())});
        std::uint32_t count = 0;
        while (count < bytes.size() && !received.empty()) {
            bytes[count++] = received.front();
            received.pop_front();
        }
        if (result == bridge_success && count == 0) {
            clock_.sleep(time_out_);
            return {bridge_read_timed_out, 0};
        }
        return {result, count};
    }

    Counted waiting() override {
        const BridgeStatus result = called("SI_CheckRXQueue", {});
        auto count = static_cast<std::uint32_t>(received.size());
        if (on_check) {
            on_check(count);
        }
        return {result, count};
    }

    [[nodiscard]] std::string trouble() const override { return trouble_text; }

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
    std::uint32_t extra_devices = 0;                       ///< devices counted that have gone since
    std::map<std::string, BridgeStatus> status;   ///< what an operation answers, 0 unless named
    std::deque<Byte> received;                    ///< receive queue
    bool flush_empties = true;                    ///< whether a flush empties the receive queue
    std::function<void(const Frame&)> on_frame;   ///< runs after each frame written
    std::function<void(std::uint32_t&)> on_check; ///< may change the number of waiting bytes told
    std::string trouble_text;                     ///< reason for trouble
    std::vector<Call> calls;                      ///< every call, oldest first

private:
    BridgeStatus called(const std::string& operation, std::vector<std::int64_t> values) {
        calls.push_back({operation, std::move(values), clock_.now()});
        const auto answer = status.find(operation);
        return answer == status.end() ? bridge_success : answer->second;
    }

    VirtualClock& clock_;
    std::chrono::milliseconds time_out_{0};
};

} // namespace kv408
