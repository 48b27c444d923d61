#include "link/serial_bridge.h"

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
#include "link/device_link.h"
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
        ASSERT_EQ(bridge_.SI_Open(0, handle_), si_success) << bridge_.trouble();
    }

    static Dword listed(SerialBridge& bridge) {
        Dword count = 0;
        EXPECT_EQ(bridge.SI_GetNumDevices(count), si_success);
        return count;
    }

    static std::string serial(SerialBridge& bridge, Dword index) {
        std::array<Byte, product_string_size> text = {};
        EXPECT_EQ(bridge.SI_GetProductString(index, text, si_return_serial_number), si_success);
        return bytestostring(text);
    }

    /// Has the instrument's side send `bytes`, and waits until all have come.
    void receive(const std::vector<Byte>& bytes) {
        ASSERT_EQ(write(ports_.far_end(0), bytes.data(), bytes.size()),
                  static_cast<ssize_t>(bytes.size()));
        Dword waiting = 0;
        Dword queue_status = 9;
        for (int poll = 0; poll < 500 && waiting < bytes.size(); ++poll) {
            ASSERT_EQ(bridge_.SI_CheckRXQueue(handle_, waiting, queue_status), si_success);
            clock_.sleep(milliseconds(1));
        }
        ASSERT_EQ(waiting, bytes.size());
        EXPECT_EQ(queue_status, 0U);
    }

    /// Expects every operation on the open port to fail, none with a time-out.
    void expect_all_to_fail(Handle handle) {
        std::array<Byte, 8> bytes = {};
        Dword read = 9;
        EXPECT_EQ(bridge_.SI_Read(handle, bytes, read), si_failed);
        EXPECT_EQ(read, 0U);
        Dword written = 9;
        EXPECT_EQ(bridge_.SI_Write(handle, bytes, written), si_failed);
        EXPECT_EQ(written, 0U);
        EXPECT_EQ(bridge_.SI_FlushBuffers(handle, 1, 1), si_failed);
        Dword waiting = 9;
        Dword queue_status = 9;
        EXPECT_EQ(bridge_.SI_CheckRXQueue(handle, waiting, queue_status), si_failed);
        EXPECT_EQ(waiting, 0U);
        EXPECT_EQ(queue_status, 0U);
        EXPECT_EQ(bridge_.SI_SetBaudRate(handle, 833000), si_failed);
    }

    SystemClock clock_;
    UsbPorts ports_;
    std::ostringstream log_;
    SerialBridge bridge_{clock_, log_};
    Handle handle_ = nullptr;
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
    std::array<Byte, product_string_size> text = {};
    EXPECT_EQ(bridge_.SI_GetProductString(3, text, si_return_serial_number), si_failed);
    EXPECT_EQ(bridge_.SI_GetProductString(0, text, 1), si_failed);
}

TEST_F(SerialBridgeTest, TheIndexThatIsListedIsTheOneThatIsOpened) {
    ports_.plug(0, "first");
    ports_.plug(1, nullptr);
    ports_.plug(2, "second");
    ASSERT_EQ(listed(bridge_), 2U);
    for (const Dword index : {0U, 1U}) {
        ASSERT_EQ(bridge_.SI_Open(index, handle_), si_success);
        Dword written = 0;
        ASSERT_EQ(bridge_.SI_Write(handle_, std::array<Byte, 1>{'!'}, written), si_success);
        const int end = ports_.far_end(serial(bridge_, index) == "first" ? 0 : 2);
        std::array<char, 8> heard = {};
        EXPECT_EQ(read(end, heard.data(), heard.size()), 1) << index;
        EXPECT_EQ(bridge_.SI_Close(handle_), si_success);
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
    Dword count = 9;
    EXPECT_EQ(bridge_.SI_GetNumDevices(count), si_failed);
    EXPECT_EQ(count, 0U);
    EXPECT_EQ(bridge_.trouble(), "The system does not list its serial ports.");
}

TEST_F(SerialBridgeTest, SetsTheSpeedEightBitsOneStopAndNoFlowControl) {
    ports_.plug(0, "lm4rxa-SIM00001");
    leave_odd_settings(ports_.far_end(0));
    const LineSettings odd = line_settings(ports_.far_end(0));
    ASSERT_TRUE(odd.two_stops && odd.flow_control && odd.baud == 9600);
    listed(bridge_);
    ASSERT_EQ(bridge_.SI_Open(0, handle_), si_success);
    EXPECT_EQ(bridge_.rate(), 0U);
    errno = EPERM; // what went wrong before is no failure of this
    EXPECT_EQ(bridge_.SI_SetBaudRate(handle_, 833000), si_success);
    const LineSettings line = line_settings(ports_.far_end(0));
    EXPECT_EQ(line.baud, 833000U);
    EXPECT_TRUE(line.eight_bits);
    EXPECT_FALSE(line.parity);
    EXPECT_FALSE(line.two_stops);
    EXPECT_FALSE(line.flow_control);
    EXPECT_FALSE(line.lines);
    EXPECT_EQ(bridge_.rate(), 833000U);
    EXPECT_EQ(log_.str(), "");
    EXPECT_EQ(bridge_.SI_SetBaudRate(handle_, 0), si_failed);
}

TEST_F(SerialBridgeTest, ASpeedThatTheDriverRoundsIsLoggedAndNoFailure) {
    for (const Dword rounded : {827586U, 921600U}) {
        ports_.rounded_speed = 0;
        if (handle_ == nullptr) {
            open();
        }
        ports_.rounded_speed = rounded;
        EXPECT_EQ(bridge_.SI_SetBaudRate(handle_, 833000), si_success);
        EXPECT_EQ(bridge_.rate(), rounded);
    }
    EXPECT_EQ(log_.str(), "/dev/ttyUSB0: asked for 833000 baud, the driver set 827586\n"
                          "/dev/ttyUSB0: asked for 833000 baud, the driver set 921600\n");
}

TEST_F(SerialBridgeTest, ASpeedThatTheDriverDoesNotTellIsLoggedAsUnknown) {
    open();
    ports_.rounded_speed = 0xFFFFFFFF; // what no driver can run at
    EXPECT_EQ(bridge_.SI_SetBaudRate(handle_, 833000), si_success);
    EXPECT_EQ(bridge_.rate(), 0U);
    EXPECT_EQ(log_.str(), "/dev/ttyUSB0: asked for 833000 baud, the speed that the driver set is "
                          "not known\n");
}

TEST_F(SerialBridgeTest, ASpeedThatTheDriverRefusesIsAFailure) {
    open();
    ports_.speed_refused = true;
    EXPECT_EQ(bridge_.SI_SetBaudRate(handle_, 833000), si_failed);
    EXPECT_EQ(bridge_.trouble().find("The port /dev/ttyUSB0 failed: "), 0U) << bridge_.trouble();
}

TEST_F(SerialBridgeTest, EveryByteGoesThroughUnchangedBothWays) {
    open();
    ASSERT_EQ(bridge_.SI_SetBaudRate(handle_, 833000), si_success);
    std::vector<Byte> every(256);
    for (std::size_t index = 0; index < every.size(); ++index) {
        every[index] = static_cast<Byte>(index);
    }
    Dword written = 0;
    EXPECT_EQ(bridge_.SI_Write(handle_, every, written), si_success);
    EXPECT_EQ(written, 256U);
    std::vector<Byte> heard(300);
    ASSERT_EQ(read(ports_.far_end(0), heard.data(), heard.size()), 256);
    heard.resize(256);
    EXPECT_EQ(heard, every);
    receive(every);
    std::vector<Byte> back(256);
    Dword count = 0;
    EXPECT_EQ(bridge_.SI_Read(handle_, back, count), si_success);
    EXPECT_EQ(count, 256U);
    EXPECT_EQ(back, every);
}

TEST_F(SerialBridgeTest, AReadWaitsForAllItsBytesWithinTheTimeOut) {
    open();
    std::array<Byte, 4> bytes = {};
    Dword count = 9;
    ASSERT_EQ(bridge_.SI_SetTimeouts(80, 80), si_success);
    const auto began = clock_.now();
    EXPECT_EQ(bridge_.SI_Read(handle_, bytes, count), si_read_timed_out);
    EXPECT_EQ(count, 0U);
    EXPECT_GE(clock_.now() - began, milliseconds(80));
    EXPECT_LT(clock_.now() - began, milliseconds(2000));

    receive({1, 2, 3});
    EXPECT_EQ(bridge_.SI_Read(handle_, bytes, count), si_success);
    EXPECT_EQ(count, 3U);

    ASSERT_EQ(bridge_.SI_SetTimeouts(10000, 10000), si_success);
    receive({5});
    std::jthread later([this] {
        clock_.sleep(milliseconds(50));
        EXPECT_EQ(write(ports_.far_end(0), "abcd", 4), 4);
    });
    const auto again = clock_.now();
    EXPECT_EQ(bridge_.SI_Read(handle_, bytes, count), si_success);
    EXPECT_LT(clock_.now() - again, milliseconds(5000));
    EXPECT_EQ(bytes, (std::array<Byte, 4>{5, 'a', 'b', 'c'}));
    EXPECT_EQ(bridge_.SI_Read(handle_, {}, count), si_success);
}

TEST_F(SerialBridgeTest, AWriteThatNobodyTakesFailsWithinTheTimeOut) {
    open();
    ASSERT_EQ(bridge_.SI_SetTimeouts(50, 50), si_success);
    const std::vector<Byte> flood(1000000, 7);
    Dword written = 0;
    const auto began = clock_.now();
    EXPECT_EQ(bridge_.SI_Write(handle_, flood, written), si_failed);
    EXPECT_LT(clock_.now() - began, milliseconds(5000));
    EXPECT_LT(written, flood.size());
    EXPECT_EQ(bridge_.trouble(), "The port /dev/ttyUSB0 takes no more data.");
    // Into a queue that is full from the beginning.
    EXPECT_EQ(bridge_.SI_Write(handle_, flood, written), si_failed);
    EXPECT_EQ(bridge_.trouble(), "The port /dev/ttyUSB0 takes no more data.");
}

TEST_F(SerialBridgeTest, AFlushEmptiesTheReceiveQueue) {
    open();
    Dword waiting = 0;
    Dword queue_status = 0;
    receive({1, 2, 3});
    EXPECT_EQ(bridge_.SI_FlushBuffers(handle_, 0, 0), si_success);
    EXPECT_EQ(bridge_.SI_FlushBuffers(handle_, 1, 0), si_success);
    EXPECT_EQ(bridge_.SI_CheckRXQueue(handle_, waiting, queue_status), si_success);
    EXPECT_EQ(waiting, 3U);
    for (const Byte transmit : {Byte{1}, Byte{0}}) {
        EXPECT_EQ(bridge_.SI_FlushBuffers(handle_, transmit, 1), si_success);
        EXPECT_EQ(bridge_.SI_CheckRXQueue(handle_, waiting, queue_status), si_success);
        EXPECT_EQ(waiting, 0U);
        receive({4, 5});
    }
}

TEST_F(SerialBridgeTest, AnUnpluggedPortFailsAndIsNoTimeOut) {
    open();
    ASSERT_EQ(bridge_.SI_SetBaudRate(handle_, 833000), si_success);
    ASSERT_EQ(bridge_.SI_SetTimeouts(10, 10), si_success);
    ports_.unplug(0);
    expect_all_to_fail(handle_);
    EXPECT_EQ(bridge_.trouble(),
              "The port /dev/ttyUSB0 does not work any more. Check the instrument's USB cable.");
    EXPECT_EQ(bridge_.SI_Close(handle_), si_success);
    ports_.plug(1, "lm4rxa-SIM00001");
    ASSERT_EQ(listed(bridge_), 1U);
    EXPECT_EQ(bridge_.SI_Open(0, handle_), si_success) << bridge_.trouble();
}

TEST_F(SerialBridgeTest, AReadThatWaitsEndsWhenThePortIsUnplugged) {
    open();
    ASSERT_EQ(bridge_.SI_SetTimeouts(20000, 20000), si_success);
    const auto began = clock_.now();
    std::jthread later([this] {
        clock_.sleep(milliseconds(50));
        ports_.unplug(0);
    });
    std::array<Byte, 2> bytes = {};
    Dword count = 0;
    EXPECT_EQ(bridge_.SI_Read(handle_, bytes, count), si_failed);
    EXPECT_LT(clock_.now() - began, milliseconds(5000));
}

TEST_F(SerialBridgeTest, AWriteThatWaitsEndsWhenThePortIsUnplugged) {
    open();
    ASSERT_EQ(bridge_.SI_SetTimeouts(20000, 20000), si_success);
    const auto began = clock_.now();
    std::jthread later([this] {
        clock_.sleep(milliseconds(50));
        ports_.unplug(0);
    });
    const std::vector<Byte> flood(1000000, 7);
    Dword written = 0;
    EXPECT_EQ(bridge_.SI_Write(handle_, flood, written), si_failed);
    EXPECT_LT(clock_.now() - began, milliseconds(5000));
    EXPECT_EQ(bridge_.trouble(),
              "The port /dev/ttyUSB0 does not work any more. Check the instrument's USB cable.");
}

TEST_F(SerialBridgeTest, AReadThatASignalInterruptsGoesOn) {
    open();
    ASSERT_EQ(bridge_.SI_SetTimeouts(10000, 10000), si_success);
    const auto before = std::signal(SIGUSR1, [](int /*signal*/) {});
    std::jthread later([this, reader = pthread_self()] {
        for (int times = 0; times < 5; ++times) {
            clock_.sleep(milliseconds(10));
            pthread_kill(reader, SIGUSR1);
        }
        EXPECT_EQ(write(ports_.far_end(0), "abcd", 4), 4);
    });
    std::array<Byte, 4> bytes = {};
    Dword count = 0;
    EXPECT_EQ(bridge_.SI_Read(handle_, bytes, count), si_success);
    EXPECT_EQ(bytes, (std::array<Byte, 4>{'a', 'b', 'c', 'd'}));
    later.join();
    std::signal(SIGUSR1, before);
}

TEST_F(SerialBridgeTest, APortThatHasGoneHasNoSpeed) {
    open();
    EXPECT_EQ(bridge_.SI_Close(handle_), si_success);
    SerialPort port(clock_);
    ASSERT_EQ(port.open("/dev/ttyUSB0"), 0);
    ASSERT_EQ(port.set_rate(833000), 0);
    EXPECT_EQ(port.rate(), 833000);
    ports_.unplug(0);
    EXPECT_EQ(port.rate(), 0);
}

TEST_F(SerialBridgeTest, NothingWorksOnAHandleThatIsNotOpen) {
    int anything = 0;
    expect_all_to_fail(&anything);
    EXPECT_EQ(bridge_.SI_Close(&anything), si_failed);
    open();
    expect_all_to_fail(&anything);
    EXPECT_EQ(bridge_.SI_Close(&anything), si_failed);
    EXPECT_EQ(bridge_.SI_Close(handle_), si_success);
    EXPECT_EQ(bridge_.SI_Close(handle_), si_failed);
    expect_all_to_fail(handle_);
}

} // namespace
} // namespace kv408
