// What is told of every device that could be the instrument, for each reason why it is not reached.

#include <cerrno>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "doctor/diagnosis.h"
#include "doctor/posix/usb_devices.h"
#include "doctor/posix/usb_diagnosis.h"
#include "host/system_clock.h"
#include "link/make_bridge.h"
#include "link/posix/serial_bridge.h"
#include "support/places.h"
#include "support/ports/group_rights.h"
#include "support/ports/other_process.h"
#include "support/ports/plain_user.h"
#include "support/ports/usb_ports.h"

namespace kv408 {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::string port_title =
    "/dev/ttyUSB0 (USB device 1-1, 10c4:ea60, serial number lm4rxa-SIM00001):\n";
const std::string device_title = "USB device 1-1, 10c4:ea60, serial number lm4rxa-SIM00001:\n";
const std::string plug_in = " Unplug the instrument and plug it in again.\n";

/// Holds back other test programs of this user that play processes of known names, for as long as
/// it lives.
class OneAtATime {
public:
    OneAtATime() : file_(open(path().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        if (file_ < 0 || flock(file_, LOCK_EX) != 0) {
            throw std::system_error(errno, std::generic_category(), "the lock of the tests");
        }
    }
    ~OneAtATime() { close(file_); }
    OneAtATime(const OneAtATime&) = delete;
    OneAtATime& operator=(const OneAtATime&) = delete;

private:
    static std::filesystem::path path() {
        return std::filesystem::temp_directory_path() /
               std::string("kv408-test-processes-").append(std::to_string(geteuid()));
    }

    int file_;
};

class Diagnosis : public testing::Test {
protected:
    /// The bridge library called `name`, which is there.
    static BridgeChoice library(const std::string& name) {
        return {.bridge = std::make_unique<LibraryBridge>(name), .library = name};
    }

    void plug() { ports_.plug(0, "lm4rxa-SIM00001"); }

    void plug_portless(const char* driver) {
        ports_.plug_portless(0, {.serial = "lm4rxa-SIM00001", .driver = driver});
    }

    /// Expects exactly the line `reason` for the instrument's port.
    static void expect_of_port(const std::string& reason) {
        EXPECT_EQ(usb_diagnosis(Way::serial_port), port_title + reason + "\n");
    }

    /// Expects exactly the line `reason` for the instrument's device, which has no port.
    static void expect_of_device(const std::string& reason) {
        EXPECT_EQ(usb_diagnosis(Way::serial_port), device_title + reason);
    }

    OneAtATime alone_;
    UsbPorts ports_;
};

TEST_F(Diagnosis, APortThatCanBeHadIsLeftAsItIs) {
    plug();
    leave_odd_settings(ports_.far_end(0));
    expect_of_port("It can be opened. If the instrument does not answer, check its power.");
    const LineSettings line = line_settings(ports_.far_end(0));
    EXPECT_TRUE(line.two_stops && line.flow_control && line.lines && line.baud == 9600);
}

TEST_F(Diagnosis, WithoutPermissionItNamesTheCure) {
    plug();
    ports_.open_folders();
    // Its owner may not use it: the test may run as that user.
    const std::string group = leave_to_a_group(ports_.terminal(0), 0060);
    const PlainUser user;
    expect_of_port("You have no permission to use /dev/ttyUSB0. This line gives it to you:\n"
                   "sudo usermod -aG " +
                   group + " $USER\nThen log out and in again.");
}

TEST_F(Diagnosis, WithoutPermissionForAnyGroupTheLineIsToldThatGivesItForNow) {
    plug();
    ports_.open_folders();
    leave_to_a_group(ports_.terminal(0), 0);
    const PlainUser user;
    expect_of_port("You have no permission to use /dev/ttyUSB0. This line gives it to you until "
                   "the instrument is unplugged:\nsudo chmod a+rw /dev/ttyUSB0");
}

TEST_F(Diagnosis, WhoHasLockedThePortIsNamed) {
    plug();
    const OtherProcess other("some-terminal", {.opens = ports_.terminal(0), .locks = true});
    const std::string reason = "/dev/ttyUSB0 is in use by " + other.title() +
                               ". Close that program and start this one again.";
    expect_of_port(reason);
    // A user sees as much, of the locks.
    ports_.open_folders();
    ASSERT_EQ(chmod(ports_.terminal(0).c_str(), 0666), 0);
    const PlainUser user;
    expect_of_port(reason);
}

TEST_F(Diagnosis, WhoKeepsOthersOutWithoutALockIsNamed) {
    plug();
    const OtherProcess other("some-terminal", {.opens = ports_.terminal(0), .marks = true});
    expect_of_port("/dev/ttyUSB0 is in use by " + other.title() +
                   ". Close that program and start this one again.");
}

TEST_F(Diagnosis, WhereWhoKeepsOthersOutDoesNotShowRootIsToLook) {
    plug();
    ports_.open_folders();
    const std::string terminal = ports_.terminal(0);
    ASSERT_EQ(chmod(terminal.c_str(), 0666), 0);
    // A pseudo terminal keeps the mark when the process has ended: none shows, whoever looks.
    { const OtherProcess ended("some-terminal", {.opens = terminal, .marks = true}); }
    const PlainUser user;
    expect_of_port("Another program is using /dev/ttyUSB0. Close it and start this one again.\n"
                   "This line tells which it is:\nsudo kv408-doctor");
}

TEST_F(Diagnosis, AllWhoHaveThePortOpenToNoHarmAreNamed) {
    plug();
    const OtherProcess one("some-terminal", {.opens = ports_.terminal(0)});
    const OtherProcess two("some-logger", {.opens = ports_.terminal(0)});
    const auto& [first, second] = one.id() < two.id() ? std::tie(one, two) : std::tie(two, one);
    expect_of_port("/dev/ttyUSB0 is open in " + first.title() + " and " + second.title() +
                   " too, which disturbs the traffic. Close that program.");
}

TEST_F(Diagnosis, APortThatThisProgramHasIsNotTakenForBusy) {
    plug();
    SystemClock clock;
    std::ostringstream log;
    SerialBridge bridge(clock, log);
    ASSERT_EQ(bridge.count_devices().status, bridge_success);
    ASSERT_EQ(bridge.open(0), bridge_success);
    expect_of_port("This program has it open.");
    EXPECT_EQ(bridge.close(), bridge_success);
    expect_of_port("It can be opened. If the instrument does not answer, check its power.");
}

TEST_F(Diagnosis, APortRightBelowItsInterfaceIsLookedAt) {
    ports_.plug_modem(0, "lm4rxa-SIM00001");
    EXPECT_EQ(usb_diagnosis(Way::serial_port),
              "/dev/ttyACM0 (USB device 1-1, 10c4:ea60, serial number lm4rxa-SIM00001):\n"
              "It can be opened. If the instrument does not answer, check its power.\n");
}

TEST_F(Diagnosis, APortWhoseNodeHasGoneIsTold) {
    plug();
    ports_.remove_node(0);
    expect_of_port("There is no port /dev/ttyUSB0 any more. Check the instrument's USB cable.");
}

TEST_F(Diagnosis, AnotherSerialNumberIsNamed) {
    ports_.plug(0, "LM4RXA-SIM00001");
    EXPECT_EQ(usb_diagnosis(Way::serial_port),
              "/dev/ttyUSB0 (USB device 1-1, 10c4:ea60, serial number LM4RXA-SIM00001):\n"
              "Its serial number is another one than the instrument's, which begins with "
              "lm4rxa.\n");
}

TEST_F(Diagnosis, NoSerialNumberIsTold) {
    ports_.plug(0, nullptr);
    EXPECT_EQ(usb_diagnosis(Way::serial_port),
              "/dev/ttyUSB0 (USB device 1-1, 10c4:ea60):\n"
              "It has no serial number. That of the instrument begins with lm4rxa.\n");
}

TEST_F(Diagnosis, ASerialNumberThatCannotBeReadIsTold) {
    plug();
    ports_.open_folders();
    ports_.hide_serial(0);
    const PlainUser user;
    EXPECT_EQ(usb_diagnosis(Way::serial_port), "/dev/ttyUSB0 (USB device 1-1, 10c4:ea60):\n"
                                               "Its serial number cannot be read.\n");
}

TEST_F(Diagnosis, WithoutADriverTheLineIsToldThatLoadsIt) {
    plug_portless(nullptr);
    expect_of_device("It has no driver and so no serial port. This line loads the driver:\n"
                     "sudo modprobe cp210x\n"
                     "Unplug the instrument and plug it in again.\n");
}

TEST_F(Diagnosis, WithoutADriverWhereThatIsLoadedItIsToBePluggedInAnew) {
    plug_portless(nullptr);
    ports_.show_folder("/sys/bus/usb/drivers/cp210x");
    expect_of_device("It has no driver and so no serial port, although the driver cp210x is "
                     "loaded." +
                     plug_in);
}

TEST_F(Diagnosis, ADriverThatIsLoadedShowsAsAModuleToo) {
    plug_portless(nullptr);
    ports_.show_folder("/sys/module/cp210x");
    expect_of_device("It has no driver and so no serial port, although the driver cp210x is "
                     "loaded." +
                     plug_in);
}

TEST_F(Diagnosis, WithoutADriverAndWithOtherIdsTheDriverMayNotKnowIt) {
    ports_.plug_portless(0, {.serial = "lm4rxa-SIM00001", .ids = "1234:5678"});
    const std::string title = "USB device 1-1, 1234:5678, serial number lm4rxa-SIM00001:\n"
                              "It has no driver and so no serial port";
    const std::string ids = "Unplug the instrument and plug it in again. If it still has no serial "
                            "port, cp210x does not know its ids, 1234:5678.\n";
    EXPECT_EQ(usb_diagnosis(Way::serial_port),
              title + ". This line loads the driver:\nsudo modprobe cp210x\n" + ids);
    ports_.show_folder("/sys/bus/usb/drivers/cp210x");
    EXPECT_EQ(usb_diagnosis(Way::serial_port),
              title + ", although the driver cp210x is loaded. " + ids);
}

TEST_F(Diagnosis, ADriverThatMakesNoPortIsNamed) {
    plug_portless("usbhid");
    expect_of_device("The driver usbhid makes no serial port of it." + plug_in);
}

TEST_F(Diagnosis, ADeviceThatIsNotSetUpIsTold) {
    ports_.plug_portless(0, {.serial = "lm4rxa-SIM00001", .set_up = false});
    expect_of_device("The system has not set it up." + plug_in);
}

const std::string braille_cure = " This line ends the service, for good:\n"
                                 "sudo systemctl mask --now brltty.service brltty-udev.service\n"
                                 "Unplug the instrument and plug it in again.\n";

TEST_F(Diagnosis, TheBrailleServiceThatHasTheDeviceIsNamed) {
    plug_portless("usbfs");
    ports_.plug(1, nullptr);
    ports_.put_raw_node(0, ports_.terminal(1));
    const OtherProcess service("brltty", {.opens = ports_.terminal(1)});
    EXPECT_THAT(usb_diagnosis(Way::serial_port),
                StartsWith(device_title + service.title() +
                           ", the service for Braille displays, has taken it." + braille_cure));
}

TEST_F(Diagnosis, TheBrailleServiceIsSuspectedWhereItRuns) {
    plug_portless(nullptr);
    const OtherProcess service("brltty", {});
    expect_of_device(service.title() + ", the service for Braille displays, takes such devices." +
                     braille_cure);
}

TEST_F(Diagnosis, EveryProcessOfTheBrailleServiceIsNamed) {
    plug_portless(nullptr);
    const OtherProcess one("brltty", {});
    const OtherProcess two("brltty", {});
    const auto& [first, second] = one.id() < two.id() ? std::tie(one, two) : std::tie(two, one);
    expect_of_device(first.title() + " and " + second.title() +
                     ", the service for Braille displays, takes such devices." + braille_cure);
}

TEST_F(Diagnosis, TheBrailleServiceIsOnlySuspectedWhereWhoHasTheDeviceDoesNotShow) {
    plug_portless("usbfs");
    const OtherProcess service("brltty", {});
    expect_of_device(service.title() + ", the service for Braille displays, takes such devices." +
                     braille_cure);
}

TEST_F(Diagnosis, AnotherProgramThatHasTheDeviceIsNamed) {
    plug_portless("usbfs");
    ports_.plug(1, nullptr);
    ports_.put_raw_node(0, ports_.terminal(1));
    const OtherProcess service("brltty", {});
    const OtherProcess other("some-machine", {.opens = ports_.terminal(1)});
    EXPECT_THAT(usb_diagnosis(Way::serial_port),
                StartsWith(device_title + other.title() +
                           " has taken it, so that it has no serial port. Close that program." +
                           plug_in));
}

TEST_F(Diagnosis, AProgramThatHasTheDeviceAndDoesNotShowIsTold) {
    plug_portless("usbfs");
    expect_of_device("Another program has taken it, so that it has no serial port. Close that "
                     "program." +
                     plug_in);
}

TEST_F(Diagnosis, EveryDeviceThatCouldBeTheInstrumentIsListedAndNoOther) {
    ports_.plug(0, "other");
    ports_.plug(1, "lm4rxa-SIM00001");
    ports_.plug_portless(2, {.serial = "keyboard", .driver = "usbhid", .ids = "046d:c31c"});
    ports_.plug_portless(3, {.driver = "usbfs"});
    ports_.plug_portless(4, {.serial = "lm4rxa-SIM00002", .ids = "1234:5678"});
    const std::string text = usb_diagnosis(Way::serial_port);
    EXPECT_THAT(text, StartsWith("/dev/ttyUSB0 (USB device 1-1, 10c4:ea60, serial number other):"));
    EXPECT_THAT(text, HasSubstr("\n\n/dev/ttyUSB1 (USB device 1-2, 10c4:ea60, serial number "
                                "lm4rxa-SIM00001):\nIt can be opened."));
    EXPECT_THAT(text, HasSubstr("\n\nUSB device 1-4, 10c4:ea60:\nIt has no serial number."));
    EXPECT_THAT(text, HasSubstr("\n\nUSB device 1-5, 1234:5678, serial number lm4rxa-SIM00002:\n"
                                "It has no driver"));
    EXPECT_THAT(text, Not(HasSubstr("keyboard")));
}

TEST_F(Diagnosis, NothingThatCouldBeTheInstrumentIsToldWithTheCountOfTheOthers) {
    ports_.plug_portless(0, {.driver = "hub", .ids = "1d6b:0002", .device_class = "09"});
    const std::string none =
        "No device that could be the instrument is attached to this computer. Other USB devices: ";
    EXPECT_EQ(usb_diagnosis(Way::serial_port), none + "none.\n");
    ports_.plug_portless(1, {.serial = "keyboard", .driver = "usbhid", .ids = "046d:c31c"});
    ports_.plug_portless(2, {.driver = "usbhid", .ids = "046d:c31c"});
    EXPECT_EQ(usb_diagnosis(Way::serial_port), none + "2.\n");
}

TEST_F(Diagnosis, ASystemThatShowsNoUsbDevicesIsTold) {
    EXPECT_EQ(usb_diagnosis(Way::serial_port),
              "The system shows no USB devices: there is no /sys/bus/usb/devices.\n");
}

TEST_F(Diagnosis, ForTheLibraryTheWholeDeviceIsLookedAt) {
    plug();
    ports_.plug(1, nullptr);
    ports_.put_raw_node(0, ports_.terminal(1));
    const std::string text = usb_diagnosis(Way::library);
    EXPECT_THAT(text, StartsWith(device_title + "It can be opened."));
    EXPECT_THAT(text, HasSubstr("\n\nUSB device 1-2, 10c4:ea60:\nIt has no serial number."));
    const OtherProcess other("some-machine", {.opens = ports_.terminal(1)});
    EXPECT_THAT(usb_diagnosis(Way::library),
                StartsWith(device_title + "/dev/bus/usb/001/002 is in use by " + other.title()));
}

TEST_F(Diagnosis, ForTheLibraryWhoHasDeviceAndPortIsNamedOnce) {
    plug();
    ports_.put_raw_node(0, ports_.terminal(0));
    const OtherProcess other("some-machine", {.opens = ports_.terminal(0)});
    EXPECT_EQ(usb_diagnosis(Way::library), device_title + "/dev/bus/usb/001/002 is in use by " +
                                               other.title() +
                                               ". Close that program and start this one again.\n");
}

TEST_F(Diagnosis, ForTheLibraryWhoHasThePortAloneIsNamedToo) {
    plug();
    ports_.plug(1, nullptr);
    ports_.put_raw_node(0, ports_.terminal(1));
    const OtherProcess other("some-terminal", {.opens = ports_.terminal(0)});
    EXPECT_THAT(usb_diagnosis(Way::library),
                StartsWith(device_title + "/dev/bus/usb/001/002 is in use by " + other.title() +
                           ". Close that program and start this one again.\n"));
}

TEST_F(Diagnosis, ForTheLibraryADeviceThatThisProgramHasIsNotTakenForBusy) {
    plug();
    ports_.put_raw_node(0, ports_.terminal(0));
    const int handle = open(ports_.terminal(0).c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(handle, 0);
    EXPECT_EQ(usb_diagnosis(Way::library), device_title + "This program has it open.\n");
    close(handle);
    EXPECT_EQ(usb_diagnosis(Way::library),
              device_title +
                  "It can be opened. If the instrument does not answer, check its power.\n");
}

TEST_F(Diagnosis, ForTheLibraryWithoutPermissionTheLineIsToldThatGivesIt) {
    plug();
    ports_.plug(1, nullptr);
    ports_.put_raw_node(0, ports_.terminal(1));
    ports_.open_folders();
    ASSERT_EQ(chmod(ports_.terminal(1).c_str(), 0), 0);
    const PlainUser user;
    EXPECT_THAT(usb_diagnosis(Way::library),
                StartsWith(device_title + "You have no permission to use /dev/bus/usb/001/002. "
                                          "This line gives it to you until the instrument is "
                                          "unplugged:\nsudo chmod a+rw /dev/bus/usb/001/002\n"));
}

TEST_F(Diagnosis, ADeviceOfUnknownNumberHasNoNode) {
    for (const int number : {0, 1, 2}) {
        ports_.plug(number, "lm4rxa-SIM00001");
    }
    ports_.remove_attribute(0, "busnum");
    ports_.remove_attribute(1, "devnum");
    const auto devices = list_usb_devices();
    ASSERT_TRUE(devices);
    ASSERT_EQ(devices->size(), 3U);
    EXPECT_EQ(devices->at(0).node, "");
    EXPECT_EQ(devices->at(1).node, "");
    EXPECT_EQ(devices->at(2).node, "/dev/bus/usb/001/004");
    EXPECT_THAT(usb_diagnosis(Way::library),
                StartsWith(device_title +
                           "It has just gone. Unplug the instrument and plug it in again.\n"));
}

TEST_F(Diagnosis, TheSerialBridgeTellsThatTheLibraryIsNotThere) {
    plug();
    EXPECT_THAT(diagnosis({.serial = true}),
                StartsWith("The bridge library libSiUSBXp.so is not there: the kernel's serial "
                           "ports are used in its place.\n\n" +
                           port_title));
}

TEST_F(Diagnosis, TheSystemsWordsOnTheMissingLibraryAreTold) {
    plug();
    SystemClock clock;
    std::ostringstream log;
    const auto choice = make_bridge(clock, log, "libNoSuchBridge.so");
    EXPECT_THAT(diagnosis(choice),
                StartsWith("The bridge library libSiUSBXp.so is not there: the kernel's serial "
                           "ports are used in its place.\n"
                           "The system says: libNoSuchBridge.so: cannot open shared object file: "
                           "No such file or directory\n\n" +
                           port_title));
    EXPECT_EQ(choice.bridge->trouble(), "");
}

TEST_F(Diagnosis, ALibraryThatCannotBeLoadedIsToldInTheLoadersWords) {
    plug();
    const BridgeChoice choice = library(place::needy_library);
    const std::string trouble = choice.bridge->trouble();
    EXPECT_THAT(trouble, HasSubstr("kv408_absent.so: "));
    ports_.plug(1, nullptr);
    ports_.put_raw_node(0, ports_.terminal(1));
    EXPECT_THAT(diagnosis(choice),
                StartsWith(trouble +
                           "\nAs long as it is there, the kernel's serial ports "
                           "are not used.\n\n" +
                           device_title +
                           "It can be opened as soon as the bridge library can be used.\n\n"));
}

TEST_F(Diagnosis, WhatTheLibraryListsIsToldAndThenTheDevices) {
    plug();
    EXPECT_THAT(diagnosis(library(place::simulated_library)),
                StartsWith(std::string("The bridge library ") + place::simulated_library +
                           " is used. Devices that it lists: 1.\n"
                           "Serial number lm4rxa-SIM00001: an instrument.\n\n" +
                           device_title));
}

TEST_F(Diagnosis, ALibraryThatCannotCountItsDevicesIsTold) {
    plug();
    const BridgeChoice choice = library(place::failing_library);
    ASSERT_EQ(choice.bridge->trouble(), "");
    EXPECT_THAT(diagnosis(choice),
                StartsWith(std::string("The bridge library ") + place::failing_library +
                           " is used. It cannot count its devices: it fails with status 2.\n\n" +
                           device_title));
}

} // namespace
} // namespace kv408
