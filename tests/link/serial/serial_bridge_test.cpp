#include "link/posix/serial_bridge.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <set>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "host/system_clock.h"
#include "support/ports/usb_ports.h"

namespace kv408 {
namespace {

using std::chrono::milliseconds;

class SerialBridgeTest : public testing::Test {
protected:
    /// Plugs one instrument in, lists and opens it.
    void open() {
        ports_.plug(0, "lm4rxa-SIM00001");
        ASSERT_EQ(listed(bridge_), 1U);
        ASSERT_EQ(bridge_.open(0), bridge_success) << bridge_.trouble();
    }

    static std::uint32_t listed(SerialBridge& bridge) {
        const Counted devices = bridge.count_devices();
        EXPECT_EQ(devices.status, bridge_success);
        return devices.count;
    }

    static std::string serial(SerialBridge& bridge, std::uint32_t index) {
        const SerialNumber serial = bridge.serial_number(index);
        EXPECT_EQ(serial.status, bridge_success);
        return serial.text;
    }

    /// Has the instrument's side send `bytes`, and waits until all have come.
    void receive(const std::vector<Byte>& bytes) {
        ASSERT_EQ(write(ports_.far_end(0), bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
        for (int poll = 0; poll < 500 && waiting() < bytes.size(); ++poll) {
            clock_.sleep(milliseconds(1));
        }
        ASSERT_EQ(waiting(), bytes.size());
    }

    std::uint32_t waiting() {
        const Counted bytes = bridge_.waiting();
        EXPECT_EQ(bytes.status, bridge_success);
        return bytes.count;
    }

    /// Reads into `bytes`, which is to end with `status`; how many came.
    std::uint32_t read_into(std::span<Byte> bytes, BridgeStatus status = bridge_success) {
        const Counted read = bridge_.read(bytes);
        EXPECT_EQ(read.status, status);
        return read.count;
    }

    /// Expects every operation on the open port to fail, none with a time-out.
    void expect_all_to_fail() {
        std::array<Byte, 8> bytes = {};
        EXPECT_EQ(read_into(bytes, bridge_failed), 0U);
        EXPECT_EQ(bridge_.write(bytes), bridge_failed);
        EXPECT_EQ(bridge_.flush(), bridge_failed);
        EXPECT_EQ(bridge_.waiting().status, bridge_failed);
        EXPECT_EQ(bridge_.waiting().count, 0U);
        EXPECT_EQ(bridge_.set_speed(833000), bridge_failed);
    }

    SystemClock clock_;
    UsbPorts ports_;
    std::ostringstream log_;
    SerialBridge bridge_{clock_, log_};
};

TEST_F(SerialBridgeTest, ListsThePortsWhoseDevicesHaveASerialNumber) {
    const std::string longest(126, 'x'); // that a USB device can have
    ports_.plug(0, "lm4rxa-SIM00001");
    ports_.plug(1, nullptr);
    ports_.plug(2, "other");
    ports_.plug(3, longest.c_str());
    ASSERT_EQ(listed(bridge_), 3U);
    const std::set<std::string> serials = {serial(bridge_, 0), serial(bridge_, 1),
                                           serial(bridge_, 2)};
    EXPECT_EQ(serials, (std::set<std::string>{"lm4rxa-SIM00001", "other", longest}));
    EXPECT_EQ(bridge_.serial_number(3).status, bridge_failed);
}

TEST_F(SerialBridgeTest, TheIndexThatIsListedIsTheOneThatIsOpened) {
    ports_.plug(0, "first");
    ports_.plug(1, nullptr);
    ports_.plug(2, "second");
    ASSERT_EQ(listed(bridge_), 2U);
    for (const std::uint32_t index : {0U, 1U}) {
        ASSERT_EQ(bridge_.open(index), bridge_success);
        ASSERT_EQ(bridge_.write(std::array<Byte, 1>{'!'}), bridge_success);
        const int end = ports_.far_end(serial(bridge_, index) == "first" ? 0 : 2);
        std::array<char, 8> heard = {};
        EXPECT_EQ(read(end, heard.data(), heard.size()), 1) << index;
        EXPECT_EQ(bridge_.close(), bridge_success);
    }
}

TEST_F(SerialBridgeTest, ListsAgainWhatIsThereThen) {
    ports_.plug(0, "lm4rxa-SIM00001");
    ports_.plug(1, nullptr);
    EXPECT_EQ(listed(bridge_), 1U);
    ports_.unplug(0);
    EXPECT_EQ(listed(bridge_), 0U);
    ports_.plug(2, "lm4rxa-SIM00002");
    ASSERT_EQ(listed(bridge_), 1U);
    EXPECT_EQ(serial(bridge_, 0), "lm4rxa-SIM00002");
}

TEST_F(SerialBridgeTest, ASystemThatListsNoPortsIsAFailure) {
    EXPECT_EQ(bridge_.count_devices().status, bridge_failed);
    EXPECT_EQ(bridge_.count_devices().count, 0U);
    EXPECT_EQ(bridge_.trouble(), "The system does not list its serial ports.");
}

TEST_F(SerialBridgeTest, SetsTheSpeedEightBitsOneStopAndNoFlowControl) {
    ports_.plug(0, "lm4rxa-SIM00001");
    leave_odd_settings(ports_.far_end(0));
    const LineSettings odd = line_settings(ports_.far_end(0));
    ASSERT_TRUE(odd.two_stops && odd.flow_control && odd.baud == 9600);
    listed(bridge_);
    ASSERT_EQ(bridge_.open(0), bridge_success);
    EXPECT_EQ(bridge_.rate(), 0U);
    errno = EPERM; // what went wrong before is no failure of this
    EXPECT_EQ(bridge_.set_speed(833000), bridge_success);
    const LineSettings line = line_settings(ports_.far_end(0));
    EXPECT_EQ(line.baud, 833000U);
    EXPECT_TRUE(line.eight_bits);
    EXPECT_FALSE(line.parity);
    EXPECT_FALSE(line.two_stops);
    EXPECT_FALSE(line.flow_control);
    EXPECT_FALSE(line.lines);
    EXPECT_EQ(bridge_.rate(), 833000U);
    EXPECT_EQ(log_.str(), "");
    EXPECT_EQ(bridge_.set_speed(0), bridge_failed);
}

TEST_F(SerialBridgeTest, ASpeedThatTheDriverRoundsIsLoggedAndNoFailure) {
    for (const std::uint32_t rounded : {827586U, 921600U}) {
        ports_.rounded_speed = 0;
        if (log_.str().empty()) {
            open();
        }
        ports_.rounded_speed = rounded;
        EXPECT_EQ(bridge_.set_speed(833000), bridge_success);
        EXPECT_EQ(bridge_.rate(), rounded);
    }
    EXPECT_EQ(log_.str(), "/dev/ttyUSB0: asked for 833000 baud, the driver set 827586\n"
                          "/dev/ttyUSB0: asked for 833000 baud, the driver set 921600\n");
}

TEST_F(SerialBridgeTest, ASpeedThatTheDriverDoesNotTellIsLoggedAsUnknown) {
    open();
    ports_.rounded_speed = 0xFFFFFFFF; // what no driver can run at
    EXPECT_EQ(bridge_.set_speed(833000), bridge_success);
    EXPECT_EQ(bridge_.rate(), 0U);
    EXPECT_EQ(log_.str(), "/dev/ttyUSB0: asked for 833000 baud, the speed that the driver set is "
                          "not known\n");
}

TEST_F(SerialBridgeTest, ASpeedThatTheDriverRefusesIsAFailure) {
    open();
    ports_.speed_refused = true;
    EXPECT_EQ(bridge_.set_speed(833000), bridge_failed);
    EXPECT_EQ(bridge_.trouble().find("The port /dev/ttyUSB0 failed: "), 0U) << bridge_.trouble();
}

TEST_F(SerialBridgeTest, EveryByteGoesThroughUnchangedBothWays) {
    open();
    ASSERT_EQ(bridge_.set_speed(833000), bridge_success);
    std::vector<Byte> every(256);
    for (std::size_t index = 0; index < every.size(); ++index) {
        every[index] = static_cast<Byte>(index);
    }
    EXPECT_EQ(bridge_.write(every), bridge_success);
    std::vector<Byte> heard(300);
    ASSERT_EQ(read(ports_.far_end(0), heard.data(), heard.size()), 256);
    heard.resize(256);
    EXPECT_EQ(heard, every);
    receive(every);
    std::vector<Byte> back(256);
    EXPECT_EQ(read_into(back), 256U);
    EXPECT_EQ(back, every);
}

TEST_F(SerialBridgeTest, AReadWaitsForAllItsBytesWithinTheTimeOut) {
    open();
    std::array<Byte, 4> bytes = {};
    ASSERT_EQ(bridge_.set_time_out(80), bridge_success);
    const auto began = clock_.now();
    EXPECT_EQ(read_into(bytes, bridge_read_timed_out), 0U);
    EXPECT_GE(clock_.now() - began, milliseconds(80));
    EXPECT_LT(clock_.now() - began, milliseconds(2000));

    receive({1, 2, 3});
    EXPECT_EQ(read_into(bytes), 3U);

    ASSERT_EQ(bridge_.set_time_out(10000), bridge_success);
    receive({5});
    std::jthread later([this] {
        clock_.sleep(milliseconds(50));
        EXPECT_EQ(write(ports_.far_end(0), "abcd", 4), 4);
    });
    const auto again = clock_.now();
    EXPECT_EQ(read_into(bytes), 4U);
    EXPECT_LT(clock_.now() - again, milliseconds(5000));
    EXPECT_EQ(bytes, (std::array<Byte, 4>{5, 'a', 'b', 'c'}));
    EXPECT_EQ(read_into({}), 0U);
}

TEST_F(SerialBridgeTest, AWriteThatNobodyTakesFailsWithinTheTimeOut) {
    open();
    ASSERT_EQ(bridge_.set_time_out(50), bridge_success);
    const std::vector<Byte> flood(1000000, 7);
    const auto began = clock_.now();
    EXPECT_EQ(bridge_.write(flood), bridge_failed);
    EXPECT_LT(clock_.now() - began, milliseconds(5000));
    EXPECT_EQ(bridge_.trouble(), "The port /dev/ttyUSB0 takes no more data.");
    // Into a queue that is full from the beginning.
    EXPECT_EQ(bridge_.write(flood), bridge_failed);
    EXPECT_EQ(bridge_.trouble(), "The port /dev/ttyUSB0 takes no more data.");
}

TEST_F(SerialBridgeTest, AFlushEmptiesTheReceiveQueue) {
    open();
    receive({1, 2, 3});
    EXPECT_EQ(bridge_.flush(), bridge_success);
    EXPECT_EQ(waiting(), 0U);
    receive({4, 5});
}

TEST_F(SerialBridgeTest, AnUnpluggedPortFailsAndIsNoTimeOut) {
    open();
    ASSERT_EQ(bridge_.set_speed(833000), bridge_success);
    ASSERT_EQ(bridge_.set_time_out(10), bridge_success);
    ports_.unplug(0);
    expect_all_to_fail();
    EXPECT_EQ(bridge_.trouble(),
              "The port /dev/ttyUSB0 does not work any more. Check the instrument's USB cable.");
    EXPECT_EQ(bridge_.close(), bridge_success);
    ports_.plug(1, "lm4rxa-SIM00001");
    ASSERT_EQ(listed(bridge_), 1U);
    EXPECT_EQ(bridge_.open(0), bridge_success) << bridge_.trouble();
}

TEST_F(SerialBridgeTest, AReadThatWaitsEndsWhenThePortIsUnplugged) {
    open();
    ASSERT_EQ(bridge_.set_time_out(20000), bridge_success);
    const auto began = clock_.now();
    std::jthread later([this] {
        clock_.sleep(milliseconds(50));
        ports_.unplug(0);
    });
    std::array<Byte, 2> bytes = {};
    EXPECT_EQ(read_into(bytes, bridge_failed), 0U);
    EXPECT_LT(clock_.now() - began, milliseconds(5000));
}

TEST_F(SerialBridgeTest, AWriteThatWaitsEndsWhenThePortIsUnplugged) {
    open();
    ASSERT_EQ(bridge_.set_time_out(20000), bridge_success);
    const auto began = clock_.now();
    std::jthread later([this] {
        clock_.sleep(milliseconds(50));
        ports_.unplug(0);
    });
    const std::vector<Byte> flood(1000000, 7);
    EXPECT_EQ(bridge_.write(flood), bridge_failed);
    EXPECT_LT(clock_.now() - began, milliseconds(5000));
    EXPECT_EQ(bridge_.trouble(),
              "The port /dev/ttyUSB0 does not work any more. Check the instrument's USB cable.");
}

TEST_F(SerialBridgeTest, AReadThatASignalInterruptsGoesOn) {
    open();
    ASSERT_EQ(bridge_.set_time_out(10000), bridge_success);
    const auto before = std::signal(SIGUSR1, [](int /*signal*/) {});
    std::jthread later([this, reader = pthread_self()] {
        for (int times = 0; times < 5; ++times) {
            clock_.sleep(milliseconds(10));
            pthread_kill(reader, SIGUSR1);
        }
        EXPECT_EQ(write(ports_.far_end(0), "abcd", 4), 4);
    });
    std::array<Byte, 4> bytes = {};
    EXPECT_EQ(read_into(bytes), 4U);
    EXPECT_EQ(bytes, (std::array<Byte, 4>{'a', 'b', 'c', 'd'}));
    later.join();
    std::signal(SIGUSR1, before);
}

TEST_F(SerialBridgeTest, APortThatHasGoneHasNoSpeed) {
    open();
    EXPECT_EQ(bridge_.close(), bridge_success);
    SerialPort port(clock_);
    ASSERT_EQ(port.open("/dev/ttyUSB0"), 0);
    ASSERT_EQ(port.set_rate(833000), 0);
    EXPECT_EQ(port.rate(), 833000);
    ports_.unplug(0);
    EXPECT_EQ(port.rate(), 0);
}

TEST_F(SerialBridgeTest, NothingWorksWhileNothingIsOpen) {
    expect_all_to_fail();
    EXPECT_EQ(bridge_.close(), bridge_failed);
    open();
    EXPECT_EQ(bridge_.close(), bridge_success);
    EXPECT_EQ(bridge_.close(), bridge_failed);
    expect_all_to_fail();
}

} // namespace
} // namespace kv408
