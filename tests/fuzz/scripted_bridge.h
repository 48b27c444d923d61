#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cstring>
#include <deque>
#include <span>
#include <string>

#include "fuzz/fuzz_input.h"
#include "fuzz/promise.h"
#include "link/bridge.h"
#include "support/virtual_clock.h"

namespace kv408 {

/// A bridge whose every answer a fuzzer's input decides: each operation takes a byte, below
/// `first_deviation` it does what a bridge with an instrument behind it does, from there on it
/// fails, lies about a count or keeps the caller waiting. Demands that every frame is a frame.
class ScriptedBridge : public Bridge {
public:
    ScriptedBridge(VirtualClock& clock, FuzzInput& input) : clock_(clock), input_(input) {}

    Counted count_devices() override {
        const int deviation = draw();
        const std::uint32_t count = deviation == lies ? any_count() : 1;
        return {status_of(deviation), count};
    }

    SerialNumber serial_number(std::uint32_t) override {
        const int deviation = draw();
        --operations; // as many as there are devices
        std::string serial = "lm4rxa-FUZZ0001";
        if (deviation == lies) {
            serial.resize(longest_serial_number);
            std::generate(serial.begin(), serial.end(),
                          [this] { return std::bit_cast<char>(input_.byte()); });
            serial.resize(std::strlen(serial.c_str())); // up to a zero
        }
        return {status_of(deviation), serial};
    }

    BridgeStatus open(std::uint32_t) override {
        const BridgeStatus status = status_of(draw());
        opened += status == bridge_success ? 1 : 0;
        return status;
    }

    BridgeStatus close() override {
        --opened;
        return status_of(draw());
    }

    BridgeStatus set_speed(std::uint32_t) override { return status_of(draw()); }

    BridgeStatus set_time_out(std::uint32_t milliseconds) override {
        time_out_ = std::chrono::milliseconds(milliseconds);
        return status_of(draw());
    }

    BridgeStatus flush() override {
        const int deviation = draw();
        if (deviation != lies) {
            queue_.clear();
        }
        return status_of(deviation);
    }

    BridgeStatus write(std::span<const Byte> bytes) override {
        demand_frame(bytes);
        const int deviation = draw();
        if (deviation != waits) {
            answer(bytes[1]);
        }
        return status_of(deviation);
    }

    Counted read(std::span<Byte> bytes) override {
        const int deviation = draw();
        std::uint32_t read = 0;
        while (read < bytes.size() && !queue_.empty()) {
            bytes[read++] = queue_.front();
            queue_.pop_front();
        }
        if (read < bytes.size() || deviation == waits) {
            clock_.sleep(time_out_);
        }
        const bool timed_out = read == 0 && !bytes.empty();
        read = deviation == lies ? any_count() : read;
        return {timed_out && deviation == none ? bridge_read_timed_out : status_of(deviation),
                read};
    }

    Counted waiting() override {
        const int deviation = draw();
        const std::uint32_t count =
            deviation == lies ? any_count() : static_cast<std::uint32_t>(queue_.size());
        return {status_of(deviation), count};
    }

    int operations = 0; ///< operations so far, the listing of serial numbers apart
    int opened = 0;     ///< openings that succeeded less closings

private:
    static constexpr std::uint8_t first_deviation = 0xC0;
    enum Deviation { none, lies, waits, fails, times_out, succeeds_below_zero };

    int draw() {
        ++operations;
        const std::uint8_t byte = input_.byte();
        return byte < first_deviation ? none : lies + (byte - first_deviation) % 5;
    }

    static BridgeStatus status_of(int deviation) {
        switch (deviation) {
        case fails:
            return bridge_failed;
        case times_out:
            return bridge_read_timed_out;
        case succeeds_below_zero:
            return -65536; // zero in its low 16 bits
        default:
            return bridge_success;
        }
    }

    std::uint32_t any_count() {
        constexpr std::array<std::uint32_t, 12> counts = {
            0, 1, 2, 3, 8, 1299, 1300, 1301, 1400, 5002, 0x8000, 0xFFFFFFFF};
        return counts[input_.below(counts.size())];
    }

    static void demand_frame(std::span<const Byte> bytes) {
        demand(bytes.size() == 8 && bytes[0] == 4, "a frame has eight bytes, the first is 4");
        int sum = 0;
        for (std::size_t index = 1; index < 7; ++index) {
            sum += bytes[index];
        }
        demand(bytes[7] == sum % 256, "the checksum is that of code and arguments");
        constexpr std::array codes = {8, 9, 26, 27, 29, 30, 31, 32, 33, 34, 35};
        demand(std::find(codes.begin(), codes.end(), bytes[1]) != codes.end(),
               "the instrument knows the command");
    }

    /// Queues what the instrument answers: as it should in half of the cases, else any bytes.
    void answer(Byte code) {
        constexpr Byte fetch_sample = 26;
        constexpr Byte start_linearity = 29;
        constexpr Byte start_sweep = 32;
        constexpr Byte read_flash = 33;
        constexpr Byte write_flash = 34;
        switch (code) {
        case start_sweep:
            return answer_sweep();
        case fetch_sample:
        case read_flash:
            return send(2);
        case write_flash:
            return;
        default:
            queue_.push_back(6);
            if (code == start_linearity) {
                send(input_.below(16));
            }
        }
    }

    void answer_sweep() {
        constexpr std::size_t block = 1300;
        switch (input_.below(4)) {
        case 1:
            queue_.insert(queue_.end(), {0x1A, 0x0A});
            break;
        case 2:
            send(input_.byte() * std::size_t{6});
            break;
        case 3:
            send(input_.below(5));
            break;
        default:
            send(block);
        }
    }

    /// Queues `count` bytes: a start from the input and then a saw tooth.
    void send(std::size_t count) {
        const std::uint8_t high = input_.byte();
        std::uint8_t low = input_.byte();
        const std::uint8_t step = count > 2 ? input_.byte() : std::uint8_t{0};
        for (std::size_t index = 0; index < count; ++index) {
            queue_.push_back(index % 2 == 0 ? high : low);
            low = static_cast<std::uint8_t>(low + (index % 2 == 0 ? 0 : step));
        }
    }

    VirtualClock& clock_;
    FuzzInput& input_;
    std::deque<Byte> queue_;
    std::chrono::milliseconds time_out_{1000};
};

} // namespace kv408
