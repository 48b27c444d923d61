#pragma once

#include "simulator/simulation.h"
#include "support/virtual_clock.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <initializer_list>
#include <string>
#include <vector>

namespace kv408::simulator {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::nanoseconds;

using Arguments = std::array<int, 5>;

/// The serial port: ten bits per byte at 833000 baud.
inline constexpr double byte_us = 10.0e6 / 833000.0;

/// A frame as the protocol builds it: 4, command, arguments, low byte of their sum.
inline std::vector<Byte> frame(int command, const Arguments& arguments) {
    std::vector<Byte> bytes = {4, static_cast<Byte>(command)};
    int sum = command;
    for (const int argument : arguments) {
        bytes.push_back(static_cast<Byte>(argument));
        sum += argument;
    }
    bytes.push_back(static_cast<Byte>(sum & 0xFF));
    return bytes;
}

/// A 32-bit value as the first four arguments, most significant byte first.
inline Arguments long_arguments(std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    return {static_cast<int>(bits >> 24U), static_cast<int>((bits >> 16U) & 0xFFU),
            static_cast<int>((bits >> 8U) & 0xFFU), static_cast<int>(bits & 0xFFU), 0};
}

/// A simulation on a virtual clock with its device open at the right speed, and the exchanges
/// that the program makes with it.
class BenchDriver : public ::testing::Test {
protected:
    BenchDriver() {
        EXPECT_EQ(bridge().open(0), bridge_success);
        EXPECT_EQ(bridge().set_speed(833000), bridge_success);
    }

    TestBench& bench() { return simulation_.bench(); }
    Bridge& bridge() { return simulation_.bridge(); }

    /// Takes everything random and every error out.
    void make_exact() {
        simulation_.set_calibrated();
        silence(bench());
    }

    BridgeStatus write(const std::vector<Byte>& bytes) { return bridge().write(bytes); }

    void send(int command, const Arguments& arguments) {
        EXPECT_EQ(write(frame(command, arguments)), bridge_success);
    }

    std::uint32_t waiting() {
        const Counted counted = bridge().waiting();
        EXPECT_EQ(counted.status, bridge_success);
        return counted.count;
    }

    /// Reads up to `count` bytes; `status_` keeps the status.
    std::vector<Byte> read(std::size_t count) {
        std::vector<Byte> bytes(count);
        const Counted counted = bridge().read(bytes);
        status_ = counted.status;
        bytes.resize(counted.count);
        return bytes;
    }

    /// Sends a command and checks its acknowledge.
    void set_up(int command, const Arguments& arguments) {
        send(command, arguments);
        EXPECT_EQ(read(1), std::vector<Byte>{6}) << "command " << command;
    }

    /// Sets level (mV), source-and-edge code and hysteresis.
    void set_trigger(int level_mv, int code, int hysteresis = 10) {
        const int level = level_mv + 2048;
        const bool first = code < 10;
        set_up(8, {(level >> 8) & 0xFF, level & 0xFF, code, first ? hysteresis : 255,
                   first ? 255 : hysteresis});
    }

    void set_gain(int first, int second) { set_up(9, {first, second, 0, 0, 0}); }
    void set_resolution(std::int32_t picoseconds) { set_up(31, long_arguments(picoseconds)); }
    void set_offset(int channel, std::int32_t picoseconds) {
        set_up(channel == 1 ? 30 : 35, long_arguments(picoseconds));
    }

    /// The reply to a sweep of 650 points, as words; empty after the read time-out.
    std::vector<int> sweep(int channel, bool average = false, bool fast = false) {
        send(32, {2, 138, average ? 1 : 0, fast ? 1 : 0, channel});
        return words(read(1300));
    }

    static std::vector<int> words(const std::vector<Byte>& bytes) {
        std::vector<int> result;
        for (std::size_t place = 0; place + 1 < bytes.size(); place += 2) {
            result.push_back(bytes[place] * 256 + bytes[place + 1]);
        }
        return result;
    }

    [[nodiscard]] double now_us() const {
        return static_cast<double>(clock_.now().count()) / 1000.0;
    }

    VirtualClock clock_;
    WireLog log_;
    Simulation simulation_{clock_, {}, 1, &log_};
    BridgeStatus status_ = bridge_success;
};

/// The waiting word, as the reply to a sweep that gets no trigger.
inline const std::vector<int> waiting_words = {0x1A0A};

} // namespace kv408::simulator
