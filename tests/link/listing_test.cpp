#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

/// A bridge that takes its time to tell a serial number.
class SlowBridge : public FakeBridge {
public:
    explicit SlowBridge(VirtualClock& clock) : FakeBridge(clock), clock_(clock) {}

    SerialNumber serial_number(std::uint32_t index) override {
        clock_.advance(std::chrono::milliseconds(6));
        return FakeBridge::serial_number(index);
    }

private:
    VirtualClock& clock_;
};

TEST(ListDevices, ListsInTheLibrarysOrderAndSelectsTheFirst) {
    LinkRig rig;
    rig.bridge.serials = {"other", "lm4rxa0SERIAL1", "third"};
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_EQ(rig.bridge.timeline(),
              (Texts{"SI_GetNumDevices @0", "SI_GetProductString 0 0 @0",
                     "SI_GetProductString 1 0 @0", "SI_GetProductString 2 0 @0"}));
    EXPECT_EQ(rig.link.state().devices.serials, (Texts{"other", "lm4rxa0SERIAL1", "third"}));
    EXPECT_EQ(rig.link.state().devices.selected, 0);
    EXPECT_EQ(rig.link.state().numdevices, 3);
}

TEST(ListDevices, ALongListingStopsForAnEnd) {
    LinkRig rig;
    SlowBridge bridge(rig.clock);
    bridge.serials.assign(10000, "foreign");
    DeviceLink link(bridge, rig.clock, rig.boxes, rig.program);
    link.on_long_work([&] {
        if (rig.clock.now() >= std::chrono::seconds(1)) {
            end_program(rig.program);
        }
    });
    EXPECT_THROW(link.listdevices(), ProgramEnded);
    EXPECT_LE(rig.clock.now(), std::chrono::milliseconds(1120));
}

TEST(ListDevices, ReplacesAnEarlierListing) {
    LinkRig rig;
    rig.bridge.serials = {"a", "b", "c"};
    rig.link.listdevices();
    rig.bridge.serials = {"d"};
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_EQ(rig.link.state().devices.serials, Texts{"d"});
    EXPECT_EQ(rig.link.state().devices.selected, 0);
}

TEST(ListDevices, WithNothingAttachedTheListIsEmpty) {
    LinkRig rig;
    rig.bridge.serials = {};
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_TRUE(rig.link.state().devices.serials.empty());
    EXPECT_EQ(rig.link.state().devices.selected, -1);
    EXPECT_EQ(rig.link.state().numdevices, 0);
}

TEST(ListDevices, FailsWithoutASelectionWhenTheDevicesCannotBeCounted) {
    for (const BridgeStatus failure : {2, 255, 65536}) {
        LinkRig rig;
        rig.link.listdevices();
        rig.bridge.calls.clear();
        rig.bridge.status["SI_GetNumDevices"] = failure;
        EXPECT_FALSE(rig.link.listdevices()) << failure;
        EXPECT_EQ(rig.link.state().devices.selected, -1) << failure;
        EXPECT_TRUE(rig.link.state().devices.serials.empty()) << failure;
        EXPECT_EQ(rig.bridge.calls.size(), 1U) << failure;
        EXPECT_TRUE(rig.boxes.shown.empty()) << failure;
    }
}

TEST(ListDevices, SerialNumbersOfAnyBytesAreListed) {
    LinkRig rig;
    std::string every_byte;
    for (int byte = 1; byte <= 255; ++byte) {
        every_byte.push_back(static_cast<char>(byte));
    }
    rig.bridge.serials = {"", every_byte + "!", std::string(400, 'q'), "\t\r\n\x1b[2J", "lm4rxa"};
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_EQ(rig.link.state().devices.serials,
              (Texts{"", every_byte + "!", std::string(256, 'q'), "\t\r\n\x1b[2J", "lm4rxa"}));
}

TEST(ListDevices, ADeviceWhoseSerialNumberCannotBeReadKeepsItsPlace) {
    LinkRig rig;
    rig.bridge.serials = {"a", "b"};
    rig.bridge.status["SI_GetProductString"] = 5;
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_EQ(rig.link.state().devices.serials, (Texts{"", ""}));
    EXPECT_EQ(rig.link.state().commstatus, 5);
}

TEST(ListDevices, ACountBeyond16BitsStaysPositive) {
    LinkRig rig;
    rig.bridge.extra_devices = 65535;
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_EQ(rig.link.state().numdevices, 32767);
    EXPECT_EQ(rig.link.state().devices.serials.size(), 32767U);
    rig.bridge.extra_devices = 0x80000000U;
    EXPECT_TRUE(rig.link.listdevices());
    EXPECT_EQ(rig.link.state().numdevices, 32767);
}

TEST(FindDevice, Lists) {
    LinkRig rig;
    rig.link.finddevice();
    EXPECT_EQ(rig.link.state().devices.serials, Texts{"lm4rxa0SERIAL1"});
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(FindDevice, EndsTheProgramWhenTheDevicesCannotBeCounted) {
    LinkRig rig;
    rig.bridge.status["SI_GetNumDevices"] = 255;
    rig.bridge.trouble_text = "The bridge library could not be loaded.";
    EXPECT_THROW(rig.link.finddevice(), ProgramEnded);
    EXPECT_TRUE(rig.program.ended);
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error finding USB device. Aborting application."});
    EXPECT_EQ(rig.boxes.shown[0].informative, "The bridge library could not be loaded.");
    EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::ok);
}

} // namespace
} // namespace kv408
