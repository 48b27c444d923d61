// Which ports the serial bridge opens, and what it tells of those that it cannot have.

#include <cerrno>
#include <sstream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "doctor/posix/device_users.h"
#include "host/system_clock.h"
#include "link/posix/serial_bridge.h"
#include "support/ports/group_rights.h"
#include "support/ports/plain_user.h"
#include "support/ports/usb_ports.h"

namespace kv408 {
namespace {

class SerialOpening : public testing::Test {
protected:
    /// Plugs one instrument in and lists it.
    void list() {
        ports_.plug(0, "lm4rxa-SIM00001");
        ASSERT_EQ(listed(bridge_), 1U);
    }

    void open() {
        list();
        ASSERT_EQ(bridge_.open(0), bridge_success) << bridge_.trouble();
    }

    static std::uint32_t listed(SerialBridge& bridge) {
        const Counted devices = bridge.count_devices();
        EXPECT_EQ(devices.status, bridge_success);
        return devices.count;
    }

    /// Plugs one instrument in and expects opening it to fail with `trouble` in front, and to leave
    /// nothing of the port open.
    void expect_not_to_open(const std::string& trouble) {
        list();
        EXPECT_EQ(bridge_.open(0), bridge_failed);
        EXPECT_EQ(bridge_.trouble().substr(0, trouble.size()), trouble);
        EXPECT_EQ(users_of(ports_.terminal(0)), DeviceUsers());
    }

    /// Expects the port that could not be opened before to open now.
    void expect_to_open_now() {
        ports_.on_request = nullptr;
        EXPECT_EQ(bridge_.open(0), bridge_success) << bridge_.trouble();
        EXPECT_EQ(bridge_.trouble(), "");
    }

    SystemClock clock_;
    UsbPorts ports_;
    std::ostringstream log_;
    SerialBridge bridge_{clock_, log_};
};

TEST_F(SerialOpening, ASecondOpenerIsRefusedUntilTheFirstCloses) {
    open();
    SerialBridge second(clock_, log_);
    ASSERT_EQ(listed(second), 1U);
    EXPECT_EQ(second.open(0), bridge_failed);
    EXPECT_EQ(second.trouble(),
              "Another program is using /dev/ttyUSB0. Close it and start this one again.");
    EXPECT_EQ(bridge_.open(0), bridge_failed);
    EXPECT_EQ(bridge_.close(), bridge_success);
    EXPECT_EQ(second.open(0), bridge_success) << second.trouble();
    EXPECT_EQ(second.trouble(), "");
}

TEST_F(SerialOpening, WhoDoesNotAskForTheLockIsKeptOutToo) {
    open();
    ports_.open_folders();
    const std::string terminal = ports_.terminal(0);
    ASSERT_EQ(chmod(terminal.c_str(), 0666), 0);
    {
        const PlainUser user;
        EXPECT_EQ(::open(terminal.c_str(), O_RDWR | O_NOCTTY), -1);
        EXPECT_EQ(errno, EBUSY);
    }
    EXPECT_EQ(bridge_.close(), bridge_success);
    const PlainUser user;
    const int handle = ::open(terminal.c_str(), O_RDWR | O_NOCTTY);
    EXPECT_GE(handle, 0);
    close(handle);
}

TEST_F(SerialOpening, WithoutPermissionTheLineThatCuresItIsTold) {
    ports_.plug(0, "lm4rxa-SIM00001");
    ports_.open_folders();
    // Its owner may not use it: the test may run as that user.
    const std::string group = leave_to_a_group(ports_.terminal(0), 0060);
    const PlainUser user;
    ASSERT_EQ(listed(bridge_), 1U);
    EXPECT_EQ(bridge_.open(0), bridge_failed);
    EXPECT_EQ(bridge_.trouble(),
              "You have no permission to use /dev/ttyUSB0. This line gives it to you:\n"
              "sudo usermod -aG " +
                  group + " $USER\nThen log out and in again.");
}

TEST_F(SerialOpening, APortThatGoesBetweenListingAndOpeningIsTold) {
    list();
    ports_.unplug(0);
    EXPECT_EQ(bridge_.open(0), bridge_failed);
    EXPECT_EQ(bridge_.trouble(),
              "There is no port /dev/ttyUSB0 any more. Check the instrument's USB cable.");
    EXPECT_EQ(bridge_.open(1), bridge_failed);
}

TEST_F(SerialOpening, APortThatGoesAndLeavesItsNodeIsTold) {
    list();
    ports_.remove_entry(0);
    EXPECT_EQ(bridge_.open(0), bridge_failed);
    EXPECT_EQ(bridge_.trouble(),
              "There is no port /dev/ttyUSB0 any more. Check the instrument's USB cable.");
}

TEST_F(SerialOpening, APortWhoseModemLinesCannotBeReadIsNotOpened) {
    ports_.on_request = [](unsigned long request) { return request == TIOCMGET ? EIO : 0; };
    expect_not_to_open(
        "The port /dev/ttyUSB0 does not work any more. Check the instrument's USB cable.");
    expect_to_open_now();
}

TEST_F(SerialOpening, APortThatCannotBeKeptFromOthersIsNotOpened) {
    ports_.on_request = [](unsigned long request) { return request == TIOCEXCL ? ENOTTY : 0; };
    expect_not_to_open("The port /dev/ttyUSB0 failed: ");
    expect_to_open_now();
}

TEST_F(SerialOpening, AProgramThatTakesThePortWhileItIsBeingOpenedKeepsIt) {
    list();
    const int other = ::open(ports_.terminal(0).c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(other, 0);
    // libserialport asks for the modem lines as soon as it has the port open. The kernel is called
    // directly: the library that plays the ports is in the middle of that request.
    ports_.on_request = [other](unsigned long request) {
        const bool done = request != TIOCMGET || (flock(other, LOCK_EX | LOCK_NB) == 0 &&
                                                  syscall(SYS_ioctl, other, TIOCEXCL) == 0);
        return done ? 0 : EIO;
    };
    EXPECT_EQ(bridge_.open(0), bridge_failed);
    EXPECT_EQ(bridge_.trouble(),
              "Another program is using /dev/ttyUSB0. Close it and start this one again.");
    int marked = 0;
    EXPECT_EQ(syscall(SYS_ioctl, other, TIOCGEXCL, &marked), 0);
    EXPECT_NE(marked, 0);
    EXPECT_EQ(syscall(SYS_ioctl, other, TIOCNXCL), 0);
    close(other);
    EXPECT_EQ(users_of(ports_.terminal(0)), DeviceUsers());
    expect_to_open_now();
}

} // namespace
} // namespace kv408
