#include <functional>

#include <gtest/gtest.h>

#include "link/link_rig.h"

namespace kv408 {
namespace {

constexpr const char* no_match = "Error finding WKTP2B device. Aborting application.";

/// Opens of `rig`, as the indices handed to the bridge.
std::vector<std::int64_t> opened(const LinkRig& rig) {
    std::vector<std::int64_t> indices;
    for (const FakeBridge::Call& call : rig.bridge.calls) {
        if (call.operation == "SI_Open") {
            indices.push_back(call.values.at(0));
        }
    }
    return indices;
}

TEST(Discovery, OpensTheInstrumentAndLocksTheList) {
    LinkRig rig;
    rig.link.finddevice();
    EXPECT_TRUE(rig.link.select_and_open());
    EXPECT_EQ(opened(rig), std::vector<std::int64_t>{0});
    EXPECT_TRUE(rig.link.state().devfound);
    EXPECT_TRUE(rig.link.state().open);
    EXPECT_EQ(rig.link.state().serialsuffix, "SERIAL1");
    EXPECT_EQ(rig.link.state().devices.serial(), "lm4rxa0SERIAL1");
    EXPECT_FALSE(rig.link.state().devices.selectable);
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(Discovery, TakesTheFirstThatMatches) {
    LinkRig rig;
    rig.bridge.serials = {"other1", "", "lm4rxa1FIRST01", "lm4rxa2SECOND2"};
    rig.link.finddevice();
    EXPECT_TRUE(rig.link.select_and_open());
    EXPECT_EQ(opened(rig), std::vector<std::int64_t>{2});
    EXPECT_EQ(rig.link.state().devices.selected, 2);
    EXPECT_EQ(rig.link.state().serialsuffix, "FIRST01");
}

TEST(Discovery, MatchesTheFirstSixCharactersExactly) {
    for (const char* serial : {"LM4RXA0SERIAL1", "Lm4rxa0", "lm4rx", "lm4rxb0SERIAL1", "",
                               " lm4rxa0SERIAL", "xlm4rxa", "l"}) {
        LinkRig rig;
        rig.bridge.serials = {serial};
        rig.link.finddevice();
        EXPECT_THROW(rig.link.select_and_open(), ProgramEnded) << serial;
        EXPECT_TRUE(rig.program.ended) << serial;
        EXPECT_EQ(rig.boxes.texts(), Texts{no_match}) << serial;
        EXPECT_TRUE(opened(rig).empty()) << serial;
        EXPECT_FALSE(rig.link.state().devfound) << serial;
        EXPECT_TRUE(rig.link.state().devices.selectable) << serial;
    }
}

TEST(Discovery, KeepsCharacters8To14OfTheSerialNumber) {
    const std::pair<const char*, const char*> rows[] = {
        {"lm4rxa", ""},
        {"lm4rxa0", ""},
        {"lm4rxa0A", "A"},
        {"lm4rxa0ABCDEFG", "ABCDEFG"},
        {"lm4rxa0ABCDEFGH", "ABCDEFG"},
    };
    for (const auto& [serial, suffix] : rows) {
        LinkRig rig;
        rig.bridge.serials = {serial};
        rig.link.finddevice();
        EXPECT_TRUE(rig.link.select_and_open()) << serial;
        EXPECT_EQ(rig.link.state().serialsuffix, suffix) << serial;
    }
}

TEST(Discovery, WithNoDeviceItTellsAndGoesOn) {
    LinkRig rig;
    rig.bridge.serials = {};
    rig.link.finddevice();
    rig.bridge.calls.clear();
    EXPECT_FALSE(rig.link.select_and_open());
    EXPECT_EQ(rig.boxes.texts(), Texts{"ERROR!!! No attached device is found!!!"});
    EXPECT_EQ(rig.boxes.shown[0].buttons, MessageButtons::ok);
    EXPECT_FALSE(rig.program.ended);
    EXPECT_TRUE(rig.bridge.calls.empty());
    EXPECT_FALSE(rig.link.state().open);
}

TEST(Discovery, ADeviceThatMatchesButFailsToOpenEndsTheSearchAndTheProgram) {
    for (const BridgeStatus failure : {2, 255, 65536}) {
        LinkRig rig;
        rig.bridge.serials = {"x", "lm4rxa1FIRST01", "lm4rxa2SECOND2"};
        rig.bridge.status["SI_Open"] = failure;
        rig.bridge.trouble_text = "why";
        rig.link.finddevice();
        EXPECT_THROW(rig.link.select_and_open(), ProgramEnded) << failure;
        EXPECT_TRUE(rig.program.ended);
        EXPECT_EQ(opened(rig), std::vector<std::int64_t>{1}) << failure;
        EXPECT_EQ(rig.boxes.texts(),
                  Texts{"Error opening device: lm4rxa1FIRST01. Application is aborting. Reset "
                        "hardware and try again."});
        EXPECT_EQ(rig.boxes.shown[0].informative, "why");
        EXPECT_FALSE(rig.link.state().open);
        EXPECT_FALSE(rig.link.state().devfound);
    }
}

TEST(Discovery, ASerialNumberForgesNoLineOfAMessageAndStaysAsItIs) {
    const std::string serial = "lm4rxa\x1B\nDone.\xFF";
    LinkRig rig;
    rig.bridge.serials = {serial};
    rig.bridge.status["SI_Open"] = 2;
    rig.link.finddevice();
    EXPECT_THROW(rig.link.select_and_open(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(),
              Texts{"Error opening device: lm4rxa\\x1b\\x0aDone.\\xff. Application is aborting. "
                    "Reset hardware and try again."});
    EXPECT_EQ(rig.link.state().devices.serial(), serial);
    EXPECT_EQ(rig.link.state().serialsuffix, serial.substr(7, 7));
}

TEST(Discovery, EachStateOfTheListingIsShown) {
    LinkRig rig;
    struct Shown {
        Texts serials;
        int selected;
        bool selectable;
        bool operator==(const Shown&) const = default;
    };
    std::vector<Shown> shown;
    rig.link.on_listing([&](const DeviceListing& devices) {
        shown.push_back({devices.serials, devices.selected, devices.selectable});
    });
    rig.bridge.serials = {"other", "lm4rxa1FIRST01"};
    rig.link.finddevice();
    const Shown empty = {{}, -1, true};
    const Shown listed = {rig.bridge.serials, 0, true};
    EXPECT_EQ(shown, (std::vector{empty, listed}));
    shown.clear();
    EXPECT_TRUE(rig.link.select_and_open());
    const Shown chosen = {rig.bridge.serials, 1, true};
    const Shown locked = {rig.bridge.serials, 1, false};
    EXPECT_EQ(shown, (std::vector{chosen, locked}));
    shown.clear();
    rig.link.finddevice(); // as after Retry
    EXPECT_EQ(shown, (std::vector{Shown{{}, -1, false}, Shown{rig.bridge.serials, 0, false}}));
}

TEST(Discovery, TheListingIsShownBeforeAMessageOfIt) {
    LinkRig rig;
    int selected = -2;
    rig.link.on_listing([&](const DeviceListing& devices) { selected = devices.selected; });
    rig.boxes.on_show = [&](const Message&) { EXPECT_EQ(selected, 1); };
    rig.bridge.serials = {"other", "third"};
    rig.link.finddevice();
    EXPECT_THROW(rig.link.select_and_open(), ProgramEnded);
    rig.bridge.serials = {"other", "lm4rxa1FIRST01"};
    rig.bridge.status["SI_Open"] = 2;
    rig.link.finddevice();
    EXPECT_THROW(rig.link.select_and_open(), ProgramEnded);
    EXPECT_EQ(rig.boxes.shown.size(), 2U);
}

TEST(Discovery, ADeviceUnpluggedBetweenListingAndOpeningEndsTheProgram) {
    LinkRig rig;
    rig.link.finddevice();
    rig.bridge.serials = {};
    rig.bridge.status["SI_Open"] = 2;
    EXPECT_THROW(rig.link.select_and_open(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{"Error opening device: lm4rxa0SERIAL1. Application is "
                                       "aborting. Reset hardware and try again."});
}

TEST(Discovery, DevicesThatWentBeforeTheirSerialNumberWasReadAreNoMatch) {
    LinkRig rig;
    rig.bridge.serials = {};
    rig.bridge.extra_devices = 2;
    rig.link.finddevice();
    EXPECT_EQ(rig.link.state().devices.serials, (Texts{"", ""}));
    EXPECT_THROW(rig.link.select_and_open(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{no_match});
}

TEST(Discovery, ADevicePluggedInAfterTheListingIsFoundByTheNextOne) {
    LinkRig rig;
    rig.bridge.serials = {};
    rig.link.finddevice();
    rig.bridge.serials = {"lm4rxa0SERIAL1"};
    EXPECT_FALSE(rig.link.select_and_open());
    rig.link.finddevice();
    EXPECT_TRUE(rig.link.select_and_open());
}

TEST(Discovery, SerialNumbersThatCannotBeReadAreNoMatch) {
    LinkRig rig;
    rig.bridge.status["SI_GetProductString"] = 5;
    rig.link.finddevice();
    EXPECT_THROW(rig.link.select_and_open(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts{no_match});
}

TEST(Discovery, EveryMessageOfAFailureHasTheDiagnosisInItsDetails) {
    const std::function<void(FakeBridge&)> failures[] = {
        [](FakeBridge& bridge) { bridge.status["SI_GetNumDevices"] = 2; },
        [](FakeBridge& bridge) { bridge.serials = {}; },
        [](FakeBridge& bridge) { bridge.serials = {"other"}; },
        [](FakeBridge& bridge) { bridge.status["SI_Open"] = 2; },
        [](FakeBridge& bridge) { bridge.status["SI_Write"] = 2; },
    };
    std::set<std::string> texts;
    for (const auto& fail : failures) {
        LinkRig rig;
        fail(rig.bridge);
        rig.diagnosis = "what is there";
        try {
            rig.link.finddevice();
            if (rig.link.select_and_open()) {
                rig.link.sendcommand(command::set_trigger, {});
            }
        } catch (const ProgramEnded&) {
        }
        ASSERT_EQ(rig.boxes.shown.size(), 1U);
        EXPECT_EQ(rig.boxes.shown[0].details, "what is there") << rig.boxes.shown[0].text;
        texts.insert(rig.boxes.shown[0].text);
    }
    EXPECT_EQ(texts.size(), 4U); // a lost connection is told like a missing instrument
}

TEST(Discovery, EachOperationIsAnnouncedBeforeItIsDone) {
    LinkRig rig;
    std::vector<std::size_t> done; // operations at each announcement
    rig.link.on_operation([&] { done.push_back(rig.bridge.calls.size()); });
    rig.bridge.acknowledge_all();
    rig.link.finddevice();
    EXPECT_TRUE(rig.link.select_and_open());
    rig.link.set_link_speed();
    EXPECT_TRUE(rig.link.checkdevice());
    EXPECT_TRUE(rig.link.send_setup(command::set_trigger, "trigger "));
    rig.link.set_usual_timeouts();
    EXPECT_EQ(rig.link.waiting(), 0U);
    std::array<Byte, 2> reply = {};
    EXPECT_FALSE(rig.link.read(reply));
    rig.link.close();
    ASSERT_EQ(done.size(), rig.bridge.calls.size());
    for (std::size_t index = 0; index < done.size(); ++index) {
        EXPECT_EQ(done[index], index);
    }
}

TEST(Discovery, ABridgeThatKnowsOfNoTroubleTellsNone) {
    const LinkRig rig;
    EXPECT_EQ(rig.bridge.Bridge::trouble(), "");
}

TEST(Discovery, WhereThereIsNowhereToLookNothingIsFoundInTheWay) {
    LinkRig rig;
    const DeviceLink link(rig.bridge, rig.clock, rig.boxes, rig.program);
    EXPECT_EQ(link.diagnosis(), "");
}

TEST(LinkSpeed, IsSetTo833000Baud) {
    LinkRig rig;
    rig.open();
    rig.link.set_link_speed();
    EXPECT_EQ(rig.bridge.timeline(), Texts{"SI_SetBaudRate 833000 @0"});
    EXPECT_TRUE(rig.boxes.shown.empty());
}

TEST(LinkSpeed, ARefusalIsToldAndTheProgramCarriesOn) {
    for (const BridgeStatus failure : {6, 65536}) {
        LinkRig rig;
        rig.open();
        rig.bridge.status["SI_SetBaudRate"] = failure;
        rig.bridge.trouble_text = "why";
        rig.link.set_link_speed();
        EXPECT_EQ(rig.boxes.texts(), Texts{"error seting baud rate"}) << failure;
        EXPECT_EQ(rig.boxes.shown[0].informative, "why") << failure;
        EXPECT_FALSE(rig.program.ended) << failure;
        EXPECT_TRUE(rig.link.state().open) << failure;
    }
}

} // namespace
} // namespace kv408
