#include <algorithm>
#include <deque>

#include <gtest/gtest.h>

#include "acquisition/acquisition_rig.h"

namespace kv408 {
namespace {

constexpr const char* power_text =
    "No connection to Device, maybe it's not powered. Please check and click <Retry>!";

/// The bridge's operations in their order.
Texts operations(const AcquisitionRig& rig) {
    Texts result;
    for (const FakeBridge::Call& call : rig.bridge.calls) {
        result.push_back(call.operation);
    }
    return result;
}

const Texts attempt = {"SI_FlushBuffers", "SI_Write", "SI_Read"};

Texts joined(const std::vector<Texts>& parts) {
    Texts result;
    for (const Texts& part : parts) {
        result.insert(result.end(), part.begin(), part.end());
    }
    return result;
}

const Texts discovery = {"SI_GetNumDevices", "SI_GetProductString", "SI_Open", "SI_SetBaudRate",
                         "SI_SetTimeouts"};

TEST(Retry, APowerlessInstrumentIsListedAndOpenedAgain) {
    AcquisitionRig rig;
    rig.diagnosis = "what is there";
    rig.boxes.answers = {MessageAnswer::retry};
    rig.boxes.on_show = [&](const Message& message) {
        EXPECT_EQ(message.text, power_text);
        EXPECT_EQ(message.details, "what is there");
        EXPECT_EQ(message.buttons, MessageButtons::retry_cancel);
        EXPECT_EQ(message.icon, MessageIcon::exclamation);
        EXPECT_EQ(operations(rig), joined({discovery, attempt, attempt, attempt, {"SI_Close"}}));
        rig.forget();
        rig.acknowledge_set_up(); // powered
    };
    rig.start_up.Form_Load();
    const Texts calls = operations(rig);
    ASSERT_GT(calls.size(), 8U);
    EXPECT_EQ(Texts(calls.begin(), calls.begin() + 8), joined({discovery, attempt}));
    EXPECT_TRUE(rig.program.loaded);
    EXPECT_EQ(rig.bridge.count("SI_Close"), 0);
    EXPECT_FALSE(rig.panel.device.enabled());
}

TEST(Retry, AWrongAnswerIsClosedBeforeTheDevicesAreListedAgain) {
    AcquisitionRig rig;
    rig.bridge.on_frame = [&](const FakeBridge::Frame&) { rig.bridge.receive({7}); };
    rig.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry};
    rig.boxes.on_show = [&](const Message& message) {
        if (message.text == power_text) {
            rig.acknowledge_set_up();
        }
    };
    rig.start_up.Form_Load();
    EXPECT_EQ(rig.boxes.texts(), (Texts{"Buffer(0) <> 6", power_text}));
    const Texts calls = operations(rig);
    const Texts start = joined({discovery, attempt, {"SI_Close"}, discovery, attempt});
    ASSERT_GT(calls.size(), start.size());
    EXPECT_EQ(Texts(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(start.size())),
              start);
    EXPECT_TRUE(rig.program.loaded);
}

TEST(Retry, MayBePressedManyTimes) {
    AcquisitionRig rig;
    rig.boxes.answers = std::deque<MessageAnswer>(5, MessageAnswer::retry);
    rig.boxes.answers.push_back(MessageAnswer::cancel);
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(), Texts(6, power_text));
    EXPECT_EQ(rig.bridge.count("SI_Open"), 6);
    EXPECT_EQ(rig.bridge.count("SI_Close"), 6);
    EXPECT_EQ(rig.bridge.frames().size(), 18U);
}

TEST(Retry, CancelEndsTheProgram) {
    AcquisitionRig rig;
    rig.boxes.answers = {MessageAnswer::cancel};
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    EXPECT_TRUE(rig.program.ended);
    EXPECT_FALSE(rig.program.loaded);
    EXPECT_EQ(rig.bridge.count("SI_GetNumDevices"), 1);
    EXPECT_TRUE(rig.screen.calls.empty());
}

TEST(Retry, WithNoDeviceItIsOfferedWithoutAnyWrite) {
    AcquisitionRig rig;
    rig.bridge.serials = {};
    rig.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry, MessageAnswer::ok,
                         MessageAnswer::cancel};
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    const Texts round = {"ERROR!!! No attached device is found!!!", power_text};
    EXPECT_EQ(rig.boxes.texts(), joined({round, round}));
    EXPECT_EQ(operations(rig), Texts(2, "SI_GetNumDevices"));
    EXPECT_FALSE(rig.program.loaded);
}

// The given text wonders whether the instrument has power; what is known stands below it.
TEST(Retry, SaysThatNothingIsAttachedAndNamesTheDemoOnce) {
    AcquisitionRig rig;
    rig.bridge.serials = {};
    rig.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry, MessageAnswer::ok,
                         MessageAnswer::cancel};
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    ASSERT_EQ(rig.boxes.shown.size(), 4U);
    EXPECT_EQ(rig.boxes.shown[1].informative,
              "No device is attached. To try the program without an instrument, start kv408-demo.");
    EXPECT_EQ(rig.boxes.shown[3].informative, "No device is attached.");
}

TEST(Retry, ADeviceThatDoesNotAnswerIsNotCalledMissing) {
    AcquisitionRig rig;
    rig.boxes.answers = {MessageAnswer::cancel};
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    ASSERT_EQ(rig.boxes.texts(), Texts{power_text});
    EXPECT_EQ(rig.boxes.shown[0].informative, "");
}

TEST(Retry, ADevicePluggedInMeanwhileIsFound) {
    AcquisitionRig rig;
    rig.bridge.serials = {};
    rig.acknowledge_set_up();
    rig.boxes.answers = {MessageAnswer::ok, MessageAnswer::retry};
    rig.boxes.on_show = [&](const Message&) { rig.bridge.serials = {"lm4rxa0SERIAL1"}; };
    rig.start_up.Form_Load();
    EXPECT_EQ(rig.boxes.shown.size(), 2U);
    EXPECT_TRUE(rig.program.loaded);
}

TEST(Retry, AnInstrumentUnpluggedMeanwhileIsNotWrittenTo) {
    AcquisitionRig rig;
    rig.boxes.answers = {MessageAnswer::retry, MessageAnswer::ok, MessageAnswer::cancel};
    rig.boxes.on_show = [&](const Message&) { rig.bridge.serials = {}; };
    EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded);
    EXPECT_EQ(rig.boxes.texts(),
              (Texts{power_text, "ERROR!!! No attached device is found!!!", power_text}));
    EXPECT_EQ(rig.bridge.frames().size(), 3U);
    EXPECT_EQ(rig.bridge.count("SI_Close"), 1);
}

struct EndRow {
    const char* operation;
    const char* message;
};

TEST(StartUpFailure, EndsTheProgramWithItsMessage) {
    const EndRow rows[] = {
        {"SI_GetNumDevices", "Error finding USB device. Aborting application."},
        {"SI_GetProductString", "Error finding WKTP2B device. Aborting application."},
        {"SI_Open", "Error opening device: lm4rxa0SERIAL1. Application is aborting. Reset hardware "
                    "and try again."},
        {"SI_Write", "Error finding WKTP2B device. Aborting application."},
    };
    for (const EndRow& row : rows) {
        AcquisitionRig rig;
        rig.bridge.status[row.operation] = 9;
        EXPECT_THROW(rig.start_up.Form_Load(), ProgramEnded) << row.operation;
        EXPECT_TRUE(rig.program.ended);
        EXPECT_EQ(rig.boxes.texts(), Texts{row.message});
        EXPECT_EQ(rig.bridge.calls.back().operation, row.operation);
        EXPECT_TRUE(rig.screen.calls.empty());
    }
}

TEST(ShutDown, ClosesTheDeviceOnceAndEnds) {
    for (const bool by_menu : {false, true}) {
        AcquisitionRig rig;
        rig.start();
        const auto leave = [&] {
            by_menu ? rig.panel.menuexit.click() : rig.start_up.Form_Unload();
        };
        EXPECT_THROW(leave(), ProgramEnded);
        EXPECT_TRUE(rig.program.ended);
        EXPECT_EQ(operations(rig), Texts{"SI_Close"});
        EXPECT_THROW(leave(), ProgramEnded);
        EXPECT_EQ(operations(rig), Texts{"SI_Close"});
        EXPECT_TRUE(rig.boxes.shown.empty());
    }
}

} // namespace
} // namespace kv408
