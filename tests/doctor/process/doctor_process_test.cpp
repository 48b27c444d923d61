// kv408-doctor as a process, at the port of an instrument.

#include <array>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <unistd.h>

#include "host/system_clock.h"
#include "link/make_bridge.h"
#include "support/places.h"
#include "support/ports/instrument_on_port.h"
#include "support/ports/usb_ports.h"
#include "support/shell.h"

namespace kv408 {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string doctor() {
    return place::programs + std::string("/kv408-doctor");
}

/// Runs the doctor with `arguments` in the world of ports that umockdev plays for this process.
Outcome run_doctor(const std::string& arguments = {}) {
    // The replacements come before the sanitizer's, which minds; their own leaks are not ours.
    return run_in_shell(
        std::string("ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0 LD_PRELOAD=") +
        place::umockdev_preload + " exec " + doctor() + " " + arguments);
}

class DoctorProcess : public testing::Test {
protected:
    void plug(const char* serial = "lm4rxa-SIM00001") { ports_.plug(0, serial); }

    void switch_on() { instrument_.emplace(ports_.far_end(0)); }

    UsbPorts ports_;
    std::optional<InstrumentOnPort> instrument_;
};

TEST_F(DoctorProcess, AnInstrumentThatAnswersIs0) {
    plug();
    switch_on();
    const Outcome outcome = run_doctor();
    EXPECT_EQ(outcome.output, "The bridge library libSiUSBXp.so is not there: the kernel's serial "
                              "ports are used in its place.\n"
                              "The system says: libSiUSBXp.so: cannot open shared object file: No "
                              "such file or directory\n\n"
                              "/dev/ttyUSB0 (USB device 1-1, 10c4:ea60, serial number "
                              "lm4rxa-SIM00001):\n"
                              "It can be opened. If the instrument does not answer, check its "
                              "power.\n\n"
                              "The instrument lm4rxa-SIM00001 answers.\n");
    EXPECT_EQ(outcome.code, 0);
}

TEST_F(DoctorProcess, ASilentInstrumentIs1) {
    plug();
    const Outcome outcome = run_doctor();
    EXPECT_THAT(outcome.output,
                EndsWith("\n\nThe instrument lm4rxa-SIM00001 does not answer: check its power.\n"));
    EXPECT_EQ(outcome.code, 1);
}

TEST_F(DoctorProcess, NothingAttachedIs1) {
    ports_.plug_nothing();
    const Outcome outcome = run_doctor();
    EXPECT_THAT(outcome.output, HasSubstr("\n\nNo device that could be the instrument is attached "
                                          "to this computer. Other USB devices: none.\n\n"
                                          "ERROR!!! No attached device is found!!!\n"));
    EXPECT_EQ(outcome.code, 1);
}

TEST_F(DoctorProcess, AnotherDeviceIs1) {
    plug("other");
    const Outcome outcome = run_doctor();
    EXPECT_THAT(outcome.output, HasSubstr("Its serial number is another one"));
    EXPECT_EQ(outcome.code, 1);
}

TEST_F(DoctorProcess, APortInUseIsLeftAloneAndItsUserNamed) {
    plug();
    SystemClock clock;
    const auto bridge = make_bridge(clock, std::clog, "libNoSuchBridge.so").bridge;
    ASSERT_EQ(bridge->count_devices().status, bridge_success);
    ASSERT_EQ(bridge->open(0), bridge_success) << bridge->trouble();
    leave_odd_settings(ports_.far_end(0));
    const Outcome outcome = run_doctor();
    EXPECT_THAT(outcome.output, HasSubstr("\n/dev/ttyUSB0 is in use by test_doctor_pro (process " +
                                          std::to_string(getpid()) +
                                          "). Close that program and start this one again.\n"));
    EXPECT_EQ(outcome.code, 1);
    const LineSettings line = line_settings(ports_.far_end(0));
    EXPECT_TRUE(line.two_stops && line.flow_control && line.lines && line.baud == 9600);
    std::array<Byte, 1> heard = {};
    EXPECT_EQ(read(ports_.far_end(0), heard.data(), heard.size()), -1) << "it has sent something";
}

TEST_F(DoctorProcess, TheBridgeLibraryIsUsedWhereItIs) {
    const std::filesystem::path library = place::simulated_library;
    const Outcome outcome =
        run_in_shell("LD_LIBRARY_PATH=" + library.parent_path().string() + " exec " + doctor());
    EXPECT_THAT(outcome.output, StartsWith("The bridge library libSiUSBXp.so is used. Devices that "
                                           "it lists: 1.\n"));
    EXPECT_THAT(outcome.output, EndsWith("\n\nThe instrument lm4rxa-SIM00001 answers.\n"));
    EXPECT_EQ(outcome.code, 0);
}

TEST_F(DoctorProcess, HelpIs0AndWrongUseIs2) {
    const Outcome help = run_doctor("--help");
    EXPECT_THAT(help.output, StartsWith("Usage: kv408-doctor\n"));
    EXPECT_EQ(help.code, 0);
    const Outcome wrong = run_doctor("--version 2>&1");
    EXPECT_EQ(wrong.output, "kv408-doctor takes no arguments but --help.\n");
    EXPECT_EQ(wrong.code, 2);
}

} // namespace
} // namespace kv408
